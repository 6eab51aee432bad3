#pragma once
// 新旧対照表: the kept versions of the document chosen on the export console, and
// the table of the two the user picks (by default the latest two), opened like a
// finished document.

#include <QDialog>

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
    QString m_lastDocument;
};

} // namespace normaris
