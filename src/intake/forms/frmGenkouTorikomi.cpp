#include "intake/forms/frmGenkouTorikomi.h"

#include "base/AppState.h"
#include "base/BusyCursor.h"
#include "intake/RulesFile.h"
#include "intake/RulesIntake.h"
#include "shell/forms/FormHelpers.h"

#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QProgressDialog>
#include <QPushButton>
#include <QSplitter>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace normaris {

frmGenkouTorikomi::frmGenkouTorikomi(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmGenkouTorikomi"));
    setWindowTitle(QStringLiteral("現行規程の取込"));
    resize(twips(12000), twips(8400));
    auto *layout = new QVBoxLayout(this);

    auto *fileRow = new QHBoxLayout;
    fileRow->addWidget(new QLabel(QStringLiteral("ファイル:"), this));
    m_file = new QLineEdit(this);
    m_file->setObjectName(QStringLiteral("Text1"));
    fileRow->addWidget(m_file, 1);
    QPushButton *browse = makeButton(this, QStringLiteral("Command4"), QStringLiteral("参照(&B)..."));
    QPushButton *read = makeButton(this, QStringLiteral("Command5"), QStringLiteral("読取(&R)"));
    fileRow->addWidget(browse);
    fileRow->addWidget(read);
    layout->addLayout(fileRow);

    auto *split = new QSplitter(Qt::Vertical, this);
    m_tree = new QTreeWidget(split);
    m_tree->setObjectName(QStringLiteral("TreeView1"));
    m_tree->setHeaderLabels({QStringLiteral("章・条"), QStringLiteral("項"), QStringLiteral("号")});
    m_tree->header()->setStretchLastSection(false);
    m_tree->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    m_report = new QListWidget(split);
    m_report->setObjectName(QStringLiteral("List1"));
    split->addWidget(m_tree);
    split->addWidget(m_report);
    split->setStretchFactor(0, 3);
    split->setStretchFactor(1, 1);
    layout->addWidget(split, 1);

    auto *form = new QFormLayout;
    m_code = new QLineEdit(this);
    m_code->setObjectName(QStringLiteral("Text2"));
    m_code->setMaxLength(2);
    m_code->setToolTip(QStringLiteral("数字で70～99"));
    m_name = new QLineEdit(this);
    m_name->setObjectName(QStringLiteral("Text3"));
    m_style = new QComboBox(this);
    m_style->setObjectName(QStringLiteral("Combo1"));
    m_style->addItem(QStringLiteral("である調"), QStringLiteral("1"));
    m_style->addItem(QStringLiteral("ですます調"), QStringLiteral("2"));
    m_style->setCurrentIndex(AppState::instance().CurBunshoKeishikiCode == u"2" ? 1 : 0);
    m_companyName = new QCheckBox(this);
    m_companyName->setObjectName(QStringLiteral("Check1"));
    m_companyName->setVisible(false);
    form->addRow(QStringLiteral("規程Code:"), m_code);
    form->addRow(QStringLiteral("表示名称:"), m_name);
    form->addRow(QStringLiteral("文章形式:"), m_style);
    form->addRow(QString(), m_companyName);
    layout->addLayout(form);

    auto *buttons = new QHBoxLayout;
    QPushButton *help = makeButton(this, QStringLiteral("Command3"), QStringLiteral("ヘルプ(&H)"));
    m_take = makeButton(this, QStringLiteral("Command1"), QStringLiteral("取込(&I)"));
    QPushButton *close = makeButton(this, QStringLiteral("Command2"), QStringLiteral("閉じる(&C)"));
    m_take->setEnabled(false);
    buttons->addWidget(help);
    buttons->addStretch();
    buttons->addWidget(m_take);
    buttons->addWidget(close);
    layout->addLayout(buttons);

    connect(browse, &QPushButton::clicked, this, &frmGenkouTorikomi::chooseFile);
    connect(read, &QPushButton::clicked, this, &frmGenkouTorikomi::readFile);
    connect(m_take, &QPushButton::clicked, this, &frmGenkouTorikomi::takeIn);
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    connect(help, &QPushButton::clicked, this, [this] { showHelp(this); });
    placeOverMainWindow(this);
}

void frmGenkouTorikomi::chooseFile()
{
    const QString file = QFileDialog::getOpenFileName(this, QStringLiteral("現行規程のファイル"), QString(),
                                                      QStringLiteral("規程のファイル (*.docx *.doc *.odt *.rtf *.pdf *.txt)"));
    if (file.isEmpty())
        return;
    m_file->setText(file);
    readFile();
}

void frmGenkouTorikomi::readFile()
{
    m_rules.reset();
    m_tree->clear();
    m_report->clear();
    m_take->setEnabled(false);
    const QString path = m_file->text().trimmed();
    intake::RulesFileResult read;
    {
        std::optional<QProgressDialog> progress;
        if (intake::needsConversion(path)) {
            progress.emplace(QStringLiteral("LibreOffice でファイルを変換しています…"), QString(), 0, 0, this);
            progress->setObjectName(QStringLiteral("Progress1"));
            progress->setWindowTitle(QStringLiteral("現行規程の取込"));
            progress->setMinimumDuration(0);
            progress->show();
            QCoreApplication::processEvents();
        }
        BusyCursor busy;
        read = intake::readRulesFile(path);
    }
    if (!read.lines) {
        uiPrompt().error(QStringLiteral("取込エラー"), read.refusal);
        return;
    }
    // The first free code of the user's own, as a suggestion.
    if (m_code->text().isEmpty())
        m_code->setText(intake::firstFreeCode(AppState::cn(), m_style->currentData().toString()));
    intake::FoundRules rules = intake::findStructure(*read.lines, QFileInfo(path).fileName(), m_code->text());
    if (rules.source.entries.isEmpty()) {
        uiPrompt().error(
            QStringLiteral("取込エラー"),
            QStringLiteral("ファイル「%1」には条が見つかりません。規則の文書か確かめてください。").arg(QFileInfo(path).fileName()));
        return;
    }
    if (m_name->text().isEmpty())
        m_name->setText(intake::defaultName(rules));
    m_rules = std::move(rules);
    showRules();
    m_take->setEnabled(true);
}

void frmGenkouTorikomi::showRules()
{
    QTreeWidgetItem *chapter = nullptr;
    QTreeWidgetItem *article = nullptr;
    for (const dictionary::SourceEntry &e : m_rules->source.entries) {
        if (e.level == Level::Chapter) {
            chapter = new QTreeWidgetItem(m_tree, {e.title});
            chapter->setExpanded(true);
        } else if (e.level == Level::Article) {
            article = new QTreeWidgetItem(chapter, {QStringLiteral("（%1）").arg(e.title), QStringLiteral("0"), QStringLiteral("0")});
        } else if (article) {
            const int column = e.level == Level::Paragraph ? 1 : 2;
            article->setText(column, QString::number(article->text(column).toInt() + 1));
        }
    }
    for (const QString &line : intake::summaryOf(*m_rules))
        m_report->addItem(line);
    m_companyName->setVisible(!m_rules->companyName.isEmpty());
    m_companyName->setChecked(false);
    m_companyName->setText(QStringLiteral("「%1」を事業所名の設定（☆0001☆）にする").arg(m_rules->companyName));
}

void frmGenkouTorikomi::takeIn()
{
    if (!m_rules)
        return;
    intake::IntakeRequest request;
    request.style = m_style->currentData().toString();
    request.code = m_code->text().trimmed();
    request.name = m_name->text().trimmed();
    request.companyName = m_companyName->isVisible() && m_companyName->isChecked() ? m_rules->companyName : QString();
    // The codes the entries were found under follow the code given.
    intake::FoundRules rules = *m_rules;
    rules.source.document = request.code;
    for (dictionary::SourceEntry &e : rules.source.entries) {
        for (dictionary::SourceReference &r : e.references)
            r.target.document = request.code;
    }
    BusyCursor busy;
    if (intake::writeRules(uiPrompt(), AppState::cn(), rules, request) == Outcome::Done) {
        uiPrompt().information(QStringLiteral("確認"),
                               QStringLiteral("規程%1「%2」として取り込みました。").arg(request.code, request.name));
        accept();
    }
}

} // namespace normaris
