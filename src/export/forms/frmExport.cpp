#include "export/forms/frmExport.h"

#include "composition/DocumentList.h"
#include "export/DocumentExport.h"
#include "fileformats/DocxOutput.h"
#include "pdf/PdfOutput.h"
#include "export/SettingSubstitution.h"
#include "export/WorkDataAge.h"
#include "export/WorkDataBuild.h"
#include "rulebase/forms/frmKakusyusettei.h"
#include "base/AppState.h"
#include "base/Failure.h"
#include "shell/forms/FormHelpers.h"
#include "versions/VersionOutput.h"
#include "versions/forms/frmVersions.h"
#include "composition/forms/CompositionFlow.h"
#include "legal/forms/frmLegalCheck.h"
#include "words/forms/frmGokusentakuSub.h"

#include <QButtonGroup>
#include <QDate>
#include <QDir>
#include <QFileDialog>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QEvent>
#include <QFile>
#include <QFileInfo>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QVBoxLayout>

#include <optional>

namespace normaris {

namespace {

enum Kind { RulesKind = 0, AgreementKind = 1, FilingKind = 2 };

// The document's own name beside the text of its line in a list.
constexpr int NameRole = Qt::UserRole + 1;

// An option group in its frame; the first option is on.
QButtonGroup *optionGroup(QWidget *owner, QGroupBox *frame, const QString &name, const QStringList &captions)
{
    auto *group = new QButtonGroup(owner);
    auto *layout = new QVBoxLayout(frame);
    for (int i = 0; i < captions.size(); ++i) {
        auto *option = new QRadioButton(captions[i], frame);
        option->setObjectName(QStringLiteral("%1_%2").arg(name).arg(i));
        group->addButton(option, i);
        layout->addWidget(option);
    }
    group->button(0)->setChecked(true);
    return group;
}

QGroupBox *frame(QWidget *parent, const QString &name, const QString &caption)
{
    auto *box = new QGroupBox(caption, parent);
    box->setObjectName(name);
    return box;
}

} // namespace

frmExport::frmExport(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmExport"));
    setWindowTitle(QStringLiteral("データエクスポート"));
    setWindowFlag(Qt::WindowMaximizeButtonHint); // the lists grow with the window
    auto *columns = new QHBoxLayout(this);
    auto *left = new QVBoxLayout;
    auto *right = new QVBoxLayout;
    columns->addLayout(left, 1);
    columns->addLayout(right);

    m_styleFrame = frame(this, QStringLiteral("Frame2"), QStringLiteral("文章形式"));
    m_style = optionGroup(this, m_styleFrame, QStringLiteral("Option2"), {QStringLiteral("である調"), QStringLiteral("ですます調")});
    auto *kindFrame = frame(this, QStringLiteral("Frame4"), QStringLiteral("種別"));
    m_kind = optionGroup(this, kindFrame, QStringLiteral("Option4"),
                         {QStringLiteral("規則・規程"), QStringLiteral("協約・協定"), QStringLiteral("就業規則届")});
    m_coverFrame = frame(this, QStringLiteral("Frame3"), QStringLiteral("表紙・目次の有無"));
    m_cover = optionGroup(this, m_coverFrame, QStringLiteral("Option3"),
                          {QStringLiteral("両方有"), QStringLiteral("表紙のみ有"), QStringLiteral("目次のみ有"), QStringLiteral("無")});
    m_numberFrame = frame(this, QStringLiteral("Frame1"), QStringLiteral("第１項の数字表示"));
    m_number = optionGroup(this, m_numberFrame, QStringLiteral("Option1"), {QStringLiteral("表示する"), QStringLiteral("表示しない")});
    m_filingFrame = frame(this, QStringLiteral("Frame5"), QString());
    auto *filingLabel = new QLabel(QStringLiteral("就業規則届と意見書を作成します。"), m_filingFrame);
    filingLabel->setObjectName(QStringLiteral("Label3"));
    auto *filingOptions = frame(m_filingFrame, QStringLiteral("Frame6"), QString());
    m_filing = optionGroup(this, filingOptions, QStringLiteral("Option5"), {QStringLiteral("作成"), QStringLiteral("変更")});
    auto *filingLayout = new QVBoxLayout(m_filingFrame);
    filingLayout->addWidget(filingLabel);
    filingLayout->addWidget(filingOptions);

    auto *options = new QHBoxLayout;
    options->addWidget(m_styleFrame);
    options->addWidget(kindFrame);
    left->addLayout(options);
    auto *options2 = new QHBoxLayout;
    options2->addWidget(m_coverFrame);
    options2->addWidget(m_numberFrame);
    left->addLayout(options2);
    m_listLabel = new QLabel(QStringLiteral("指定してください"), this);
    m_listLabel->setObjectName(QStringLiteral("Label1"));
    // The two lists and the filing frame take turns in one place, and what a kind hides
    // keeps its room, so that the console keeps its layout whatever the kind.
    auto *lists = new QGridLayout;
    lists->addWidget(m_listLabel, 0, 0);
    for (int i = 0; i < 2; ++i) {
        m_lists[i] = new QListWidget(this);
        m_lists[i]->setObjectName(QStringLiteral("DataList%1").arg(i + 1));
        lists->addWidget(m_lists[i], 1, 0);
    }
    lists->addWidget(m_filingFrame, 0, 0, 2, 1, Qt::AlignTop);
    lists->setRowStretch(1, 1);
    left->addLayout(lists, 1);
    for (QWidget *w : std::initializer_list<QWidget *>{m_styleFrame, m_coverFrame, m_numberFrame, m_listLabel, m_lists[0], m_lists[1]})
        keepRoomWhenHidden(w);

    // The steps from top to bottom, each arrow pointing to the next.
    struct Step {
        const char *name;
        const char *caption;
        void (frmExport::*run)();
    };
    const Step steps[] = {
        {"Command5", "データ作成(&M)", &frmExport::makeWorkData},       {"Command7", "基本設定・日付設定(&K)", &frmExport::openSettings},
        {"Command6", "埋込語句の設定(&I)", &frmExport::openWords},      {"Command4", "設定項目の置換(&S)", &frmExport::substitute},
        {"Command1", "データをWordへ送る(&E)", &frmExport::sendToWord},
    };
    for (int i = 0; i < 5; ++i) {
        if (i > 0) {
            auto *arrow = new QLabel(QStringLiteral("↓"), this);
            arrow->setObjectName(QStringLiteral("Label2_%1").arg(i - 1));
            arrow->setAlignment(Qt::AlignCenter);
            right->addWidget(arrow);
        }
        QPushButton *button = makeButton(this, QString::fromLatin1(steps[i].name), QString::fromUtf8(steps[i].caption));
        connect(button, &QPushButton::clicked, this, steps[i].run);
        right->addWidget(button);
        if (i == 4) {
            button->setStyleSheet(QStringLiteral("background-color: #ffe8b0;"));
            // The same document as a PDF laid out by the program, or on paper.
            auto *outputs = new QHBoxLayout;
            QPushButton *pdf = makeButton(this, QStringLiteral("cmdPdf"), QStringLiteral("PDFに保存(&P)"));
            QPushButton *print = makeButton(this, QStringLiteral("cmdPrint"), QStringLiteral("印刷(&R)"));
            connect(pdf, &QPushButton::clicked, this, &frmExport::saveAsPdf);
            connect(print, &QPushButton::clicked, this, &frmExport::printDocument);
            outputs->addWidget(pdf);
            outputs->addWidget(print);
            right->addLayout(outputs);
        }
    }
    choosePdfPath = [this](const QString &proposed) {
        return QFileDialog::getSaveFileName(this, QStringLiteral("PDFに保存"), proposed, QStringLiteral("PDF (*.pdf)"));
    };
    showPrintPreview = [this](const PdfTypist &document) {
        QPrinter printer(QPrinter::HighResolution);
        QPrintPreviewDialog preview(&printer, this);
        connect(&preview, &QPrintPreviewDialog::paintRequested, this, [&document](QPrinter *target) {
            try {
                document.paint(*target);
            } catch (const Failure &f) {
                uiPrompt().failure(f.text());
            }
        });
        return preview.exec() == QDialog::Accepted;
    };
    // Beside the chain: the kept versions of the chosen document and their comparison.
    QPushButton *versions = makeButton(this, QStringLiteral("Command8"), QStringLiteral("新旧対照表(&V)"));
    connect(versions, &QPushButton::clicked, this, &frmExport::openVersions);
    right->addSpacing(8);
    right->addWidget(versions);
    QPushButton *legalCheck = makeButton(this, QStringLiteral("Command9"), QStringLiteral("法令チェック(&L)"));
    connect(legalCheck, &QPushButton::clicked, this, &frmExport::openLegalCheck);
    right->addWidget(legalCheck);
    m_steps[0] = findChild<QPushButton *>(QStringLiteral("Command4"));
    m_steps[1] = findChild<QPushButton *>(QStringLiteral("Command5"));
    m_steps[2] = findChild<QPushButton *>(QStringLiteral("Command6"));
    right->addStretch();
    QPushButton *close = makeButton(this, QStringLiteral("Command2"), QStringLiteral("閉じる(&C)"));
    QPushButton *help = makeButton(this, QStringLiteral("Command3"), QStringLiteral("ヘルプ(&H)"));
    right->addWidget(close);
    right->addWidget(help);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
    connect(help, &QPushButton::clicked, this, [this] { showHelp(this); });

    connect(m_style, &QButtonGroup::idClicked, this, &frmExport::showStyle);
    connect(m_kind, &QButtonGroup::idClicked, this, &frmExport::showKind);
    reloadLists();
    showKind(RulesKind);
    placeOverMainWindow(this);
}

void frmExport::changeEvent(QEvent *event)
{
    // Back from a step's form, the lists say which documents are out of date.
    if (event->type() == QEvent::ActivationChange && isActiveWindow())
        markStale();
    QDialog::changeEvent(event);
}

// The selected documents of the kind, for both styles. The filing forms keep the lists as they are.
void frmExport::reloadLists()
{
    const QString kind = m_kind->checkedId() == AgreementKind ? QStringLiteral("2") : QStringLiteral("1");
    for (int i = 0; i < 2; ++i) {
        m_lists[i]->clear();
        for (const CodeAndName &d : DocumentList(AppState::cn()).selectedOfKind(QString::number(i + 1), kind)) {
            auto *item = new QListWidgetItem(d.name, m_lists[i]);
            item->setData(Qt::UserRole, d.code);
            item->setData(NameRole, d.name);
        }
    }
    markStale();
}

// A document whose work data are older than their words reads 要再作成.
void frmExport::markStale()
{
    const WorkDataAge age(AppState::cn(), uiPrompt());
    for (int i = 0; i < 2; ++i) {
        const QString style = QString::number(i + 1);
        for (int row = 0; row < m_lists[i]->count(); ++row) {
            QListWidgetItem *item = m_lists[i]->item(row);
            const QString name = item->data(NameRole).toString();
            item->setText(age.isStale(style, item->data(Qt::UserRole).toString()) ? name + kStaleMark : name);
        }
    }
}

void frmExport::showStyle(int style)
{
    const bool lists = m_kind->checkedId() != FilingKind;
    m_lists[0]->setVisible(lists && style == 0);
    m_lists[1]->setVisible(lists && style == 1);
}

void frmExport::showKind(int kind)
{
    if (kind != FilingKind)
        reloadLists();
    const bool filing = kind == FilingKind;
    m_numberFrame->setVisible(!filing);
    m_styleFrame->setVisible(!filing);
    m_coverFrame->setVisible(kind == RulesKind);
    m_filingFrame->setVisible(filing);
    for (QPushButton *b : m_steps)
        b->setEnabled(!filing);
    m_listLabel->setVisible(!filing);
    showStyle(m_style->checkedId());
}

bool frmExport::chooseStyleAndDocument()
{
    AppState &state = AppState::instance();
    const int style = m_style->checkedId();
    if (style < 0) {
        uiPrompt().error(QStringLiteral("文章形式の指定"), QStringLiteral("文章形式を指定してください。"));
        return false;
    }
    state.CurBunshoKeishikiCode = QString::number(style + 1);
    QListWidget *list = m_lists[style];
    const QListWidgetItem *item = list->currentItem();
    state.CurKiteiCode = item && item->isSelected() ? item->data(Qt::UserRole).toString() : QString();
    if (state.CurKiteiCode.isEmpty()) {
        uiPrompt().error(QStringLiteral("データ指定の確認"), QStringLiteral("処理するデータを指定してください。"));
        list->setFocus();
        return false;
    }
    return true;
}

RenderOptions frmExport::renderOptions() const
{
    RenderOptions options;
    options.kind = ExportKind(m_kind->checkedId());
    options.cover = CoverChoice(m_cover->checkedId());
    options.showFirstParagraphNumber = m_number->checkedId() == 0;
    options.filingIsChange = m_filing->checkedId() == 1;
    return options;
}

void frmExport::makeWorkData()
{
    if (!chooseStyleAndDocument())
        return;
    const AppState &state = AppState::instance();
    WorkDataBuild(AppState::cn(), uiPrompt()).build(state.CurBunshoKeishikiCode, state.CurKiteiCode);
    // The other style's document may have left the list.
    const QString chosen = state.CurKiteiCode;
    reloadLists();
    QListWidget *list = m_lists[m_style->checkedId()];
    for (int i = 0; i < list->count(); ++i) {
        if (list->item(i)->data(Qt::UserRole).toString() == chosen)
            list->setCurrentRow(i);
    }
}

void frmExport::openSettings()
{
    AppState &state = AppState::instance();
    const bool filing = m_kind->checkedId() == FilingKind;
    state.DateSettingEnabled = !filing;
    if (!filing && !chooseStyleAndDocument())
        return;
    frmKakusyusettei form(this);
    form.exec();
    markStale();
}

void frmExport::openWords()
{
    if (!chooseStyleAndDocument())
        return;
    AppState::instance().WordsPreviewAllowed = true;
    frmGokusentakuSub form(this);
    form.exec();
    AppState::instance().WordsPreviewAllowed = false;
    markStale();
}

void frmExport::substitute()
{
    if (!chooseStyleAndDocument())
        return;
    const AppState &state = AppState::instance();
    SettingSubstitution(AppState::cn(), uiPrompt()).run(state.CurBunshoKeishikiCode, state.CurKiteiCode);
    markStale();
}

void frmExport::sendToWord()
{
    const std::optional<QString> document = chosenDocument();
    if (!document)
        return;
    try {
        const QString path = temporaryDocumentPath();
        DocxOutput docx(path);
        const Outcome written = writeDocument(*document, docx);
        markStale();
        if (written != Outcome::Done) {
            QDir(QFileInfo(path).path()).removeRecursively(); // the folder made for it, and nothing else
            return;
        }
        m_lastDocument = path;
        openDocument(path);
    } catch (const Failure &f) {
        uiPrompt().failure(f.text());
    }
}

std::optional<QString> frmExport::chosenDocument()
{
    if (renderOptions().kind == ExportKind::Filing)
        return QString();
    if (!chooseStyleAndDocument())
        return std::nullopt;
    return AppState::instance().CurKiteiCode;
}

Outcome frmExport::writeDocument(const QString &document, DocumentOutput &output)
{
    const RenderOptions options = renderOptions();
    const AppState &state = AppState::instance();
    DocumentOutputs outputs{&output};
    // Only a whole document of rules or an agreement is a version; the filing forms are not.
    std::optional<VersionOutput> version;
    if (options.kind != ExportKind::Filing)
        outputs << &version.emplace(AppState::cn(), state.CurBunshoKeishikiCode, document);
    return DocumentExport(AppState::cn(), uiPrompt()).write(state.CurBunshoKeishikiCode, document, options, outputs);
}

QString frmExport::documentName() const
{
    if (m_kind->checkedId() == FilingKind)
        return QStringLiteral("就業規則届");
    const QListWidgetItem *item = m_lists[m_style->checkedId()]->currentItem();
    return item ? item->data(NameRole).toString() : QString();
}

namespace {

// A company's or a document's name may hold what a file name may not.
QString asFileName(QString name)
{
    static const QString forbidden = QStringLiteral("\\/:*?\"<>|");
    for (QChar &c : name)
        if (forbidden.contains(c) || c.unicode() < 0x20)
            c = u'_';
    return name;
}

} // namespace

QString frmExport::proposedPdfName() const
{
    const QString name =
        AppState::instance().CompanyName + u'_' + documentName() + u'_' + QDate::currentDate().toString(QStringLiteral("yyyyMMdd"));
    return QDir::home().filePath(asFileName(name) + QStringLiteral(".pdf"));
}

QString frmExport::temporaryDocumentPath() const
{
    // A folder of its own, so that the name can be the readable one.
    QTemporaryDir folder(QDir::temp().filePath(QStringLiteral("normaris-XXXXXX")));
    if (!folder.isValid())
        throw Failure(QStringLiteral("一時フォルダ「%1」にファイルを作成できません。").arg(QDir::tempPath()));
    folder.setAutoRemove(false);
    return folder.filePath(asFileName(AppState::instance().CompanyName + u'_' + documentName()) + QStringLiteral(".docx"));
}

void frmExport::saveAsPdf()
{
    // The name is asked for once the document is typed: the question of a misnumbered
    // document and the checks come first, the save dialog after them. The PDF is written
    // in the transaction that keeps its version: a save cancelled keeps none.
    const std::optional<QString> document = chosenDocument();
    if (!document)
        return;
    PdfOutput pdf([this] { return choosePdfPath(proposedPdfName()); });
    if (writeDocument(*document, pdf) != Outcome::Done)
        return;
    m_lastDocument = pdf.path();
    uiPrompt().information(QStringLiteral("処理完了"), QStringLiteral("PDF「%1」を保存しました。").arg(pdf.path()));
}

namespace {

// The document laid out for print and shown in the print preview when complete: its
// version is kept when the user prints it.
class PrintOutput : public DocumentOutput {
public:
    explicit PrintOutput(std::function<bool(const PdfTypist &)> preview) : m_preview(std::move(preview)) {}
    Typist &typist() override { return m_typist; }
    bool complete(StagedFiles &) override { return m_preview(m_typist); }

private:
    PdfTypist m_typist;
    std::function<bool(const PdfTypist &)> m_preview;
};

} // namespace

void frmExport::printDocument()
{
    const std::optional<QString> document = chosenDocument();
    if (!document)
        return;
    PrintOutput output(showPrintPreview);
    writeDocument(*document, output);
}

void frmExport::openLegalCheck()
{
    if (!chooseStyleAndDocument())
        return;
    const AppState &state = AppState::instance();
    frmLegalCheck dialog(state.CurBunshoKeishikiCode, state.CurKiteiCode, this);
    dialog.exec();
    if (dialog.goesToPanel())
        CompositionFlow::run(this);
}

void frmExport::openVersions()
{
    if (!chooseStyleAndDocument())
        return;
    const AppState &state = AppState::instance();
    frmVersions dialog(state.CurBunshoKeishikiCode, state.CurKiteiCode, this);
    dialog.exec();
}

} // namespace normaris
