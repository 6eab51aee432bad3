#pragma once
// 新旧対照表: the kept versions of the document chosen on the export console, and
// the table of the two the user picks (by default the latest two), opened like a
// finished document. The old side may instead be the latest version of another
// document of this company (the imported current rules against the new draft), and
// the table may carry a third column 備考.

#include <QDialog>

class QCheckBox;
class QComboBox;
class QTableWidget;

namespace normaris {

class frmVersions : public QDialog {
    Q_OBJECT
public:
    frmVersions(const QString &style, const QString &document, QWidget *parent = nullptr);

    // The path of the last table written, for the tests.
    QString lastDocument() const { return m_lastDocument; }

private:
    void reload();
    void makeTable();
    void deleteVersion();

    QString m_style;
    QString m_document;
    QTableWidget *m_list = nullptr; // VersionList
    QComboBox *m_older = nullptr;   // OlderSide: this document's versions, or another document
    QCheckBox *m_remarks = nullptr; // RemarksCheck
    QString m_lastDocument;
};

} // namespace normaris
