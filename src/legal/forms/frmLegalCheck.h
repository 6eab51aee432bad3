#pragma once
// 法令チェック: the result of the legal check of one document (or of every document on
// the company's list), one requirement a row in the colour of its state. A double-click
// goes to the row panel of the article the row names; the list can be saved as the
// 法令チェック表 (.xlsx).

#include "legal/LegalCheck.h"

#include <QDialog>

#include <functional>

class QTableWidget;

namespace normaris {

class frmLegalCheck : public QDialog {
    Q_OBJECT
public:
    // document empty: every document on the list in the style.
    frmLegalCheck(const QString &style, const QString &document, QWidget *parent = nullptr);

    const QList<legal::CheckResult> &results() const { return m_results; }

    // Where the .xlsx goes: a save dialog that proposes the name given; empty when the
    // user cancels. Tests put their own in its place.
    std::function<QString(const QString &proposed)> chooseXlsxPath;
    // Where the PDF goes, the same way.
    std::function<QString(const QString &proposed)> choosePdfPath;
    // Whether a double-click went to a row panel: the panel flow runs once this dialog closes.
    bool goesToPanel() const { return m_goToPanel; }

private:
    void saveXlsx();
    void savePdf();
    void goToArticle(int row);

    QTableWidget *m_list = nullptr;
    QList<legal::CheckResult> m_results;
    bool m_goToPanel = false;
};

} // namespace normaris
