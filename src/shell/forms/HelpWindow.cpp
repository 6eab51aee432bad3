#include "shell/forms/HelpWindow.h"

#include "shell/forms/FormHelpers.h"

#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QListWidget>
#include <QRegularExpression>
#include <QShortcut>
#include <QSplitter>
#include <QTextBrowser>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

namespace normaris {

namespace {

const QString kIndexPage = QStringLiteral("index.html");

// The page's own title, without the name of the help that every title ends with.
QString titleOf(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return QFileInfo(path).completeBaseName();
    static const QRegularExpression title(QStringLiteral("<title>([^<|]*)"));
    const QRegularExpressionMatch m = title.match(QString::fromUtf8(file.read(4096)));
    return m.hasMatch() ? m.captured(1).trimmed() : QFileInfo(path).completeBaseName();
}

QToolButton *toolButton(QWidget *parent, const QString &name, const QString &caption)
{
    auto *button = new QToolButton(parent);
    button->setObjectName(name);
    button->setText(caption);
    button->setToolButtonStyle(Qt::ToolButtonTextOnly);
    return button;
}

} // namespace

HelpWindow::HelpWindow(QWidget *owner, const QString &folder) : QWidget(owner, Qt::Window), m_folder(folder)
{
    setObjectName(QStringLiteral("HelpWindow"));
    setWindowTitle(QStringLiteral("ヘルプ"));
    setAttribute(Qt::WA_DeleteOnClose);
    resize(860, 600);

    auto *outer = new QVBoxLayout(this);
    auto *bar = new QHBoxLayout;
    m_back = toolButton(this, QStringLiteral("cmdBack"), QStringLiteral("← 戻る"));
    m_forward = toolButton(this, QStringLiteral("cmdForward"), QStringLiteral("進む →"));
    QToolButton *home = toolButton(this, QStringLiteral("cmdContents"), QStringLiteral("目次"));
    m_back->setToolTip(QStringLiteral("前のページに戻ります (Alt+←)"));
    m_forward->setToolTip(QStringLiteral("次のページに進みます (Alt+→)"));
    bar->addWidget(m_back);
    bar->addWidget(m_forward);
    bar->addWidget(home);
    bar->addStretch();
    outer->addLayout(bar);

    auto *split = new QSplitter(this);
    m_pages = new QListWidget(split);
    m_pages->setObjectName(QStringLiteral("lstPages"));
    m_browser = new QTextBrowser(split);
    m_browser->setObjectName(QStringLiteral("txtPage"));
    m_browser->setSearchPaths({folder});
    // Links within the help stay here; anything else opens with the desktop.
    m_browser->setOpenLinks(false);
    split->addWidget(m_pages);
    split->addWidget(m_browser);
    split->setStretchFactor(1, 1);
    split->setSizes({220, 640});
    outer->addWidget(split, 1);

    connect(m_browser, &QTextBrowser::anchorClicked, this, [this](const QUrl &url) {
        const QUrl page = m_browser->source().resolved(url);
        if (page.isLocalFile() && QFileInfo(page.toLocalFile()).absolutePath() == QFileInfo(m_folder).absoluteFilePath())
            m_browser->setSource(page);
        else if (!url.fragment().isEmpty() && url.path().isEmpty())
            m_browser->scrollToAnchor(url.fragment());
        else
            QDesktopServices::openUrl(url);
    });
    connect(m_back, &QToolButton::clicked, m_browser, &QTextBrowser::backward);
    connect(m_forward, &QToolButton::clicked, m_browser, &QTextBrowser::forward);
    connect(home, &QToolButton::clicked, this, [this] { m_browser->setSource(QUrl::fromLocalFile(QDir(m_folder).filePath(kIndexPage))); });
    connect(new QShortcut(QKeySequence::Back, this), &QShortcut::activated, m_browser, &QTextBrowser::backward);
    connect(new QShortcut(QKeySequence::Forward, this), &QShortcut::activated, m_browser, &QTextBrowser::forward);
    connect(new QShortcut(QKeySequence(Qt::Key_Escape), this), &QShortcut::activated, this, &QWidget::close);
    connect(m_browser, &QTextBrowser::sourceChanged, this, &HelpWindow::pageChanged);
    connect(m_browser, &QTextBrowser::backwardAvailable, m_back, &QToolButton::setEnabled);
    connect(m_browser, &QTextBrowser::forwardAvailable, m_forward, &QToolButton::setEnabled);
    connect(m_pages, &QListWidget::itemActivated, this,
            [this](QListWidgetItem *item) { m_browser->setSource(QUrl::fromLocalFile(item->data(Qt::UserRole).toString())); });
    connect(m_pages, &QListWidget::itemClicked, m_pages, &QListWidget::itemActivated);
    m_back->setEnabled(false);
    m_forward->setEnabled(false);
    fillPages();
}

HelpWindow *HelpWindow::showPage(QWidget *owner, const QString &page)
{
    QWidget *window = owner->window();
    auto *help = window->findChild<HelpWindow *>(QString(), Qt::FindDirectChildrenOnly);
    const bool made = !help;
    if (made)
        help = new HelpWindow(window, QFileInfo(page).absolutePath());
    if (help->currentPage() != QFileInfo(page).absoluteFilePath())
        help->m_browser->setSource(QUrl::fromLocalFile(QFileInfo(page).absoluteFilePath()));
    if (made)
        centreOver(help, window);
    help->show();
    help->raise();
    help->activateWindow();
    return help;
}

QString HelpWindow::currentPage() const { return m_browser->source().toLocalFile(); }

QStringList HelpWindow::pageTitles() const
{
    QStringList titles;
    for (int i = 0; i < m_pages->count(); ++i)
        titles << m_pages->item(i)->text();
    return titles;
}

// 目次 first, then the pages by their context numbers.
void HelpWindow::fillPages()
{
    QStringList files = QDir(m_folder).entryList({QStringLiteral("*.html")}, QDir::Files);
    std::sort(files.begin(), files.end(), [](const QString &a, const QString &b) {
        const bool indexA = a == kIndexPage, indexB = b == kIndexPage;
        if (indexA != indexB)
            return indexA;
        return QFileInfo(a).completeBaseName().toInt() < QFileInfo(b).completeBaseName().toInt();
    });
    for (const QString &file : std::as_const(files)) {
        const QString path = QDir(m_folder).absoluteFilePath(file);
        auto *item = new QListWidgetItem(file == kIndexPage ? QStringLiteral("目次") : titleOf(path), m_pages);
        item->setData(Qt::UserRole, path);
    }
}

void HelpWindow::pageChanged()
{
    const QString title = m_browser->documentTitle().section(u'|', 0, 0).trimmed();
    setWindowTitle(title.isEmpty() ? QStringLiteral("ヘルプ") : QStringLiteral("ヘルプ - ") + title);
    const QString page = currentPage();
    for (int i = 0; i < m_pages->count(); ++i) {
        if (m_pages->item(i)->data(Qt::UserRole).toString() == page) {
            const QSignalBlocker quiet(m_pages);
            m_pages->setCurrentRow(i);
        }
    }
}

} // namespace normaris
