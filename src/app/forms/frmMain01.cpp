#include "app/forms/frmMain01.h"

#include "base/ErrorLog.h"

#include "composition/forms/frmMakesentaku.h"
#include "dictionary/forms/frmDicsentaku.h"
#include "export/forms/frmExport.h"
#include "import/forms/frmCopy01.h"
#include "rulebase/forms/frmDBSakujyo.h"
#include "rulebase/forms/frmDBSakuseiSub.h"
#include "rulebase/forms/frmDBSentaku.h"
#include "rulebase/forms/frmKihon.h"
#include "rulebase/forms/frmBackup.h"
#include "rulebase/forms/frmSaiteki.h"
#include "base/AppState.h"
#include "base/BusyCursor.h"
#include "shell/forms/FormHelpers.h"
#include "app/forms/frmAbout.h"
#include "update/forms/frmDicUpdate.h"
#include "office/forms/frmDBYomikomi.h"
#include "office/forms/frmMochidashi.h"
#include "office/forms/frmMochikaeri.h"
#include "rulebase/CompanyStore.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDate>
#include <QLabel>
#include <QMenuBar>
#include <QPushButton>
#include <QRegularExpression>
#include <QStatusBar>
#include <QVBoxLayout>

namespace normaris {

namespace {

struct CommandDef {
    const char *caption;
};
// They open frmKihon, frmMakesentaku, frmExport, frmDicsentaku and frmCopy01.
const CommandDef kCommands[5] = {
    {"基本設定(&K)"}, {"作成・改訂(&M)"}, {"データをWordへ送る(&E)"}, {"ディクショナリ管理(&D)"}, {"他社データ取込(&T)"},
};

// Why 持ち出し and 持ち帰り are off on the Data folder.
const QString kServerOnlyTip = QStringLiteral("持ち出しと持ち帰りは、会社を事務所のサーバーに置いているときに使えます。");

} // namespace

frmMain01::frmMain01(QWidget *parent) : QMainWindow(parent)
{
    setObjectName(QStringLiteral("frmMain01"));
    setWindowTitle(QStringLiteral("ハルモニアワークス【ノルマリス】"));
    resize(twips(12000), twips(8600));
    // The window springs back to this size when made smaller.
    setMinimumSize(twips(11520), twips(8040));
    QPalette p = palette();
    p.setColor(QPalette::Window, QColor(0xAB, 0xAB, 0xAB)); // the application-workspace colour
    setPalette(p);
    setAutoFillBackground(true);

    buildMenus();
    buildCommands();
    buildStatusBar();
    connect(&AppState::instance(), &AppState::changed, this, &frmMain01::refreshFromState);
    refreshFromState();
}

void frmMain01::buildMenus()
{
    QMenu *file = menuBar()->addMenu(QStringLiteral("ファイル(&F)"));
    file->setObjectName(QStringLiteral("mnuFile"));
    const std::pair<int, const char *> entries[] = {
        {0, "新規作成(&N)..."},
        {1, "会社指定(&O)..."},
        {2, nullptr},
        {3, "バックアップ(&B)..."},
        {4, "最適化(&S)..."},
        {9, "ディクショナリ更新(&U)..."},
        {13, nullptr},
        {10, "会社データの読込(&I)..."},
        {11, "持ち出し(&T)..."},
        {12, "持ち帰り(&R)..."},
        {5, nullptr},
        {6, "会社削除(&D)..."},
        {7, nullptr},
        {8, "終了(&E)"},
    };
    const std::function<void()> actions[14] = {
        [this] { newCompany(); },
        [this] { chooseCompany(); },
        {},
        [this] { backup(); },
        [this] { optimise(); },
        {},
        [this] { deleteCompany(); },
        {},
        [this] { quit(); },
        [this] {
            showModal(new frmDicUpdate(this));
            onActivated();
        },
        [this] {
            showModal(new frmDBYomikomi(this));
            onActivated();
        },
        [this] {
            showModal(new frmMochidashi(this));
            onActivated();
        },
        [this] {
            showModal(new frmMochikaeri(this));
            onActivated();
        },
        {},
    };
    for (const auto &[index, caption] : entries) {
        QAction *action = caption ? file->addAction(QString::fromUtf8(caption)) : file->addSeparator();
        action->setObjectName(QStringLiteral("mnuFileNo_%1").arg(index));
        if (caption)
            connect(action, &QAction::triggered, this, actions[index]);
        if (index == 11 || index == 12)
            m_serverOnly.push_back(action);
    }
    file->setToolTipsVisible(true);
    QMenu *help = menuBar()->addMenu(QStringLiteral("ヘルプ(&H)"));
    help->setObjectName(QStringLiteral("mnuHelp"));
    QAction *about = help->addAction(QStringLiteral("バージョン情報(&A)..."));
    about->setObjectName(QStringLiteral("mnuHelpNo"));
    connect(about, &QAction::triggered, this, [this] { showModal(new frmAbout(this)); });
}

void frmMain01::buildCommands()
{
    auto *central = new QWidget(this);
    auto *layout = new QVBoxLayout(central);
    layout->setContentsMargins(twips(600), twips(600), twips(600), twips(600));
    layout->setSpacing(twips(240));
    for (int i = 0; i < 5; ++i) {
        auto *button = new QPushButton(QString::fromUtf8(kCommands[i].caption), central);
        button->setObjectName(QStringLiteral("Command%1").arg(i + 1));
        button->setMinimumSize(twips(3600), twips(600));
        button->setVisible(false);
        connect(button, &QPushButton::clicked, this, [this, i] { runCommand(i); });
        layout->addWidget(button, 0, Qt::AlignLeft);
        m_commands[i] = button;
        m_factories[i] = [i](QWidget *parent) -> QDialog * {
            const QString title = QString::fromUtf8(kCommands[i].caption).remove(QRegularExpression(QStringLiteral("\\(&.\\)")));
            uiPrompt().information(title, QStringLiteral("この機能は、この版ではまだ使えません。"));
            Q_UNUSED(parent);
            return nullptr;
        };
    }
    layout->addStretch();
    setCentralWidget(central);
    m_factories[0] = [](QWidget *parent) -> QDialog * { return new frmKihon(parent); };
    m_factories[1] = [](QWidget *parent) -> QDialog * { return new frmMakesentaku(parent); };
    m_factories[2] = [](QWidget *parent) -> QDialog * { return new frmExport(parent); };
    m_factories[3] = [](QWidget *parent) -> QDialog * { return new frmDicsentaku(parent); };
    m_factories[4] = [](QWidget *parent) -> QDialog * { return new frmCopy01(parent); };
}

void frmMain01::buildStatusBar()
{
    const QString panels[4] = {QStringLiteral("ノルマリス"), QDate::currentDate().toString(QStringLiteral("yyyy/MM/dd")), NoCompanyPrompt,
                               QStringLiteral("Version ") + QStringLiteral(NORMARIS_VERSION)};
    for (int i = 0; i < 4; ++i) {
        auto *label = new QLabel(panels[i], this);
        label->setObjectName(i == 2 ? QStringLiteral("CompanyPanel") : QStringLiteral("StatusPanel%1").arg(i + 1));
        label->setFrameStyle(QFrame::Panel | QFrame::Sunken);
        statusBar()->addWidget(label, i == 2 ? 1 : 0);
        if (i == 2)
            m_companyPanel = label;
        // Where the companies are kept, beside the open one's name.
        if (i == 2) {
            m_storePanel = new QLabel(this);
            m_storePanel->setObjectName(QStringLiteral("StorePanel"));
            m_storePanel->setFrameStyle(QFrame::Panel | QFrame::Sunken);
            statusBar()->addWidget(m_storePanel);
        }
    }
}

void frmMain01::setCommandDialog(int index, DialogFactory factory) { m_factories.at(index) = std::move(factory); }

QString frmMain01::companyPanelText() const { return m_companyPanel->text(); }

QString frmMain01::storePanelText() const { return m_storePanel->text(); }

// Which of the five commands show: every one works on the open company, so all
// while one is open and none otherwise, whatever closed it.
std::array<bool, 5> frmMain01::commandsOnView()
{
    const bool open = AppState::instance().isCompanyOpen();
    return {open, open, open, open, open};
}

void frmMain01::refreshFromState()
{
    m_companyPanel->setText(AppState::instance().companyPanel());
    const auto store = CompanyStore::of(AppState::instance().layout());
    m_storePanel->setText(store->title());
    m_storePanel->setToolTip(store->title()); // whole when the panel is too narrow
    for (QAction *action : m_serverOnly) {
        action->setEnabled(store->isServer());
        action->setToolTip(store->isServer() ? QString() : kServerOnlyTip);
    }
    const std::array<bool, 5> shown = commandsOnView();
    for (int i = 0; i < 5; ++i)
        m_commands[i]->setVisible(shown[i]);
}

void frmMain01::onActivated()
{
    QApplication::restoreOverrideCursor();
    for (QPushButton *b : m_commands)
        b->setEnabled(true);
    if (m_companyPanel->text().isEmpty())
        m_companyPanel->setText(NoCompanyPrompt);
}

void frmMain01::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::ActivationChange && isActiveWindow())
        onActivated();
    QMainWindow::changeEvent(event);
}

void frmMain01::showModal(QDialog *dialog)
{
    if (!dialog)
        return;
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    // The error log names the dialog a failure happened in.
    ErrorLog::setCommand(QStringLiteral("normaris ") + QString::fromLatin1(dialog->metaObject()->className()));
    dialog->exec();
    ErrorLog::setCommand(QStringLiteral("normaris"));
}

void frmMain01::runCommand(int index)
{
    // Disabled until the main window is active again, so a second click opens nothing.
    for (QPushButton *b : m_commands)
        b->setEnabled(false);
    showModal(m_factories.at(index)(this));
    onActivated();
}

bool frmMain01::closeOpenCompanyFirst(const QString &question)
{
    AppState &state = AppState::instance();
    if (!state.isCompanyOpen())
        return true;
    if (!uiPrompt().question(QStringLiteral("データ指定の確認"), question.arg(state.companyPanel())))
        return false;
    state.closeCompany(AppState::ClosedBy::MainWindow);
    return true;
}

void frmMain01::newCompany()
{
    if (closeOpenCompanyFirst(QStringLiteral("作業中の『%1』を閉じて、新規データを作成しますか？")))
        showModal(new frmDBSakuseiSub(this));
    onActivated();
}

void frmMain01::chooseCompany()
{
    if (closeOpenCompanyFirst(QStringLiteral("『%1』を閉じて、別の会社を指定しますか？")))
        showModal(new frmDBSentaku(this));
    onActivated();
}

void frmMain01::backup()
{
    showModal(new frmBackup(this));
    onActivated();
}

void frmMain01::optimise()
{
    showModal(new frmSaiteki(this));
    onActivated();
}

void frmMain01::deleteCompany()
{
    showModal(new frmDBSakujyo(this));
    onActivated();
}

void frmMain01::quit()
{
    if (!uiPrompt().question(QStringLiteral("終了の確認"), QStringLiteral("終了しますか？")))
        return;
    AppState &state = AppState::instance();
    if (state.isCompanyOpen())
        state.closeCompany(AppState::ClosedBy::MainWindow);
    m_quitting = true;
    close();
    QApplication::quit();
}

void frmMain01::closeEvent(QCloseEvent *event)
{
    // The close box asks like 終了; a close from elsewhere (logout) goes ahead.
    if (!m_quitting && event->spontaneous()) {
        event->ignore();
        quit();
        return;
    }
    event->accept();
}

} // namespace normaris
