#pragma once
// ヘルプ: the program's own window over the help pages shipped in <AppPath>/help/, so
// that help works with no browser and offline. The list of pages on the left, the
// page on the right with its links, and 戻る, 進む and 目次 above it (Alt+← and
// Alt+→ as in a browser). A link out of the help folder opens with the desktop.
//
// One window per dialog: it belongs to the dialog's window (so that a modal dialog
// does not block it) and closes with it. F1 again shows the dialog's page in it.

#include <QWidget>

class QListWidget;
class QTextBrowser;
class QToolButton;

namespace normaris {

class HelpWindow : public QWidget {
    Q_OBJECT
public:
    // Shows page (an existing file under the help folder) in the help window of the
    // owner's window, made on first use, and brings it to the front.
    static HelpWindow *showPage(QWidget *owner, const QString &page);

    // The file of the page on view.
    QString currentPage() const;
    // The captions of the list of pages, 目次 first.
    QStringList pageTitles() const;

private:
    explicit HelpWindow(QWidget *owner, const QString &folder);
    void fillPages();
    void pageChanged();

    QString m_folder;
    QListWidget *m_pages = nullptr;    // lstPages
    QTextBrowser *m_browser = nullptr; // txtPage
    QToolButton *m_back = nullptr;     // cmdBack
    QToolButton *m_forward = nullptr;  // cmdForward
};

} // namespace normaris
