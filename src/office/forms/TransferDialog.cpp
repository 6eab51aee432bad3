#include "office/forms/TransferDialog.h"

#include "base/AppState.h"
#include "office/CompanyTransfer.h"
#include "rulebase/CompanyNames.h"
#include "shell/forms/DialogButtons.h"
#include "shell/forms/FormHelpers.h"

#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace normaris {

namespace {

struct Transfer {
    const char16_t *formName;
    const char16_t *caption;
    const char16_t *explanation;
    const char16_t *companyHeading;
    const char16_t *fileHeading;
    const char16_t *fileDialogTitle;
    bool saving; // the file is written (a save dialog), else read
    Outcome (*step)(CompanyTransfer &transfer, const QString &name, const QString &file);
};

// By TransferDialog::Kind.
const Transfer kTransfers[] = {
    {u"frmDBYomikomi", u"会社データの読込", u"会社データファイル（.sqlite）を読み込んで、会社として登録します。", u"登録する会社名",
     u"読み込む会社データファイル", u"読み込む会社データファイル", false,
     [](CompanyTransfer &t, const QString &name, const QString &file) { return t.importFile(file, name); }},
    {u"frmMochidashi", u"持ち出し",
     u"会社のデータを会社データファイルに書き出して、持ち出し中にします。持ち帰るまで、サーバーの会社は読むことと印刷だけができます。",
     u"持ち出す会社", u"書き出すファイル", u"持ち出し先のファイル", true,
     [](CompanyTransfer &t, const QString &name, const QString &file) { return t.checkout(name, file); }},
    {u"frmMochikaeri", u"持ち帰り", u"持ち出した会社データファイルの内容をサーバーの会社に戻して、持ち出し中を解きます。", u"持ち帰る会社",
     u"持ち帰る会社データファイル", u"持ち帰る会社データファイル", false,
     [](CompanyTransfer &t, const QString &name, const QString &file) { return t.checkin(name, file); }},
};

const Transfer &transferOf(TransferDialog::Kind kind) { return kTransfers[int(kind)]; }

QString text(const char16_t *t) { return QString::fromUtf16(t); }

const QString kFileFilter = QStringLiteral("会社データファイル (*.sqlite)");
const QString kFileSuffix = QStringLiteral(".sqlite");

} // namespace

TransferDialog::TransferDialog(Kind kind, QWidget *parent) : QDialog(parent), m_kind(kind)
{
    const Transfer &t = transferOf(kind);
    setObjectName(text(t.formName));
    setWindowTitle(text(t.caption));
    auto *outer = new QVBoxLayout(this);
    auto *explanation = new QLabel(text(t.explanation), this);
    explanation->setObjectName(QStringLiteral("Label1"));
    explanation->setWordWrap(true);
    outer->addWidget(explanation);

    auto *companyFrame = new QGroupBox(text(t.companyHeading), this);
    auto *companyBox = new QVBoxLayout(companyFrame);
    const AppState &state = AppState::instance();
    if (kind == Kind::ImportFile) {
        m_name = new QLineEdit(companyFrame);
        m_name->setObjectName(QStringLiteral("Text1"));
        companyBox->addWidget(m_name);
    } else {
        m_company = new QComboBox(companyFrame);
        m_company->setObjectName(QStringLiteral("Combo1"));
        m_company->addItems(companiesOf(state.layout()));
        // The open company by default.
        m_company->setCurrentIndex(state.isCompanyOpen() ? m_company->findText(state.companyPanel()) : -1);
        companyBox->addWidget(m_company);
    }

    auto *fileFrame = new QGroupBox(text(t.fileHeading), this);
    auto *fileRow = new QHBoxLayout(fileFrame);
    m_file = new QLineEdit(fileFrame);
    m_file->setObjectName(QStringLiteral("File1"));
    QPushButton *browse = makeButton(fileFrame, QStringLiteral("cmdBrowse"), QStringLiteral("参照(&R)..."));
    fileRow->addWidget(m_file, 1);
    fileRow->addWidget(browse);
    connect(browse, &QPushButton::clicked, this, &TransferDialog::pickFile);
    // A file read in is the first thing chosen; the company is first for the others.
    outer->addWidget(kind == Kind::ImportFile ? fileFrame : companyFrame);
    outer->addWidget(kind == Kind::ImportFile ? companyFrame : fileFrame);
    if (m_name) {
        // The name is the file's base name until the user types another.
        connect(m_file, &QLineEdit::textChanged, this, [this](const QString &file) {
            if (m_name->text() != m_offeredName)
                return;
            m_offeredName = QFileInfo(file.trimmed()).completeBaseName();
            m_name->setText(m_offeredName);
        });
    }
    outer->addStretch();

    outer->addLayout(okCancelHelpRow(this, [this] { run(); }));

    installTextBoxBehaviour(this);
    resize(twips(7200), twips(4200));
    PlaceForm(this);
}

QString TransferDialog::company() const { return (m_name ? m_name->text() : m_company->currentText()).trimmed(); }

void TransferDialog::pickFile()
{
    const Transfer &t = transferOf(m_kind);
    QString start = m_file->text().trimmed();
    if (start.isEmpty() && t.saving && !company().isEmpty())
        start = QDir::home().filePath(company() + kFileSuffix);
    // Qt's own chooser speaks Japanese with the program; the platform's follows the locale.
    const QString file =
        t.saving
            ? QFileDialog::getSaveFileName(this, text(t.fileDialogTitle), start, kFileFilter, nullptr, QFileDialog::DontUseNativeDialog)
            : QFileDialog::getOpenFileName(this, text(t.fileDialogTitle), start, kFileFilter, nullptr, QFileDialog::DontUseNativeDialog);
    if (!file.isEmpty())
        m_file->setText(QDir::toNativeSeparators(file));
}

void TransferDialog::run()
{
    const Transfer &t = transferOf(m_kind);
    if (m_company && m_company->currentIndex() < 0) {
        uiPrompt().plain(text(t.caption), QStringLiteral("会社を選択してください。"));
        return;
    }
    // The step asks for what is missing, and closes the open company after a question.
    const QString file = m_file->text().trimmed();
    CompanyTransfer transfer(AppState::instance().layout(), uiPrompt());
    if (t.step(transfer, company(), file.isEmpty() ? file : QDir::fromNativeSeparators(file)) == Outcome::Done)
        accept();
}

} // namespace normaris
