#pragma once
// データエクスポート: the console from which a finished document leaves the system.
// The user picks a style, a kind and a document; five buttons, from top to bottom,
// run the chain: データ作成, the settings and dates, the words, 設定項目の置換 and
// データをWordへ送る. Nothing records which steps have run: each step looks at the data.

#include "export/DocumentRenderer.h"

#include <QDialog>

#include <functional>
#include <optional>

class QButtonGroup;
class QGroupBox;
class QLabel;
class QListWidget;
class QPushButton;

namespace normaris {

class DocumentOutput;
class PdfTypist;

class frmExport : public QDialog {
    Q_OBJECT
public:
    // What a document's line in the lists ends with when its work data are out of date.
    static inline const QString kStaleMark = QStringLiteral("（要再作成）");

    explicit frmExport(QWidget *parent = nullptr);

    // The path of the last document written, for the tests.
    QString lastDocument() const { return m_lastDocument; }

    // Where the PDF goes: a save dialog that proposes the name given; empty when
    // the user cancels. Tests put their own in its place.
    std::function<QString(const QString &proposed)> choosePdfPath;
    // The print preview of a document laid out for print: true when the user printed it.
    // Tests put their own in its place.
    std::function<bool(const PdfTypist &document)> showPrintPreview;

protected:
    void changeEvent(QEvent *event) override;

private:
    void reloadLists();
    void markStale();
    void showKind(int kind);
    void showStyle(int style);
    // The choosing step every button but 閉じる starts with: false after its message.
    bool chooseStyleAndDocument();
    RenderOptions renderOptions() const;

    void makeWorkData();
    void openSettings();
    void openWords();
    void substitute();
    void sendToWord();
    void saveAsPdf();
    void printDocument();
    // The document, written to output as
    // データをWordへ送る writes it, checks and questions first, with its version kept
    // in the same transaction when output completes. The outcome of the export.
    Outcome writeDocument(const QString &document, DocumentOutput &output);
    // The document the options and the list name (none for the filing forms), after the
    // choosing step; nothing after its message.
    std::optional<QString> chosenDocument();
    // The chosen document's name (就業規則届 for the filing forms).
    QString documentName() const;
    // 会社名_文書名_日付.pdf
    QString proposedPdfName() const;
    // 会社名_文書名.docx in a new folder of its own in the temporary folder. Throws Failure.
    QString temporaryDocumentPath() const;
    void openVersions();
    // 法令チェック of the chosen document; a double-click in its list goes to the row panel.
    void openLegalCheck();

    QButtonGroup *m_style = nullptr;  // Option2
    QButtonGroup *m_kind = nullptr;   // Option4
    QButtonGroup *m_cover = nullptr;  // Option3
    QButtonGroup *m_number = nullptr; // Option1
    QButtonGroup *m_filing = nullptr; // Option5
    QGroupBox *m_styleFrame = nullptr;
    QGroupBox *m_coverFrame = nullptr;
    QGroupBox *m_numberFrame = nullptr;
    QGroupBox *m_filingFrame = nullptr;
    QListWidget *m_lists[2] = {};  // DataList1, DataList2
    QLabel *m_listLabel = nullptr; // Label1
    QPushButton *m_steps[3] = {};  // Command4, Command5, Command6
    QString m_lastDocument;
};

} // namespace normaris
