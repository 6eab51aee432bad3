#pragma once
// The shared application state: what every dialog reads and writes to hand over
// to the next one. One instance lives for the whole run.
//
// The company panel's text is the record of what is open: a company name, or
// NoCompanyPrompt. Every test of "is a company open" and "is this the open
// company" compares with it. The data connection `cn` is open exactly when a
// company is.

#include "base/CompanyLock.h"

#include <QObject>
#include <QSqlDatabase>
#include <QString>
#include <array>
#include <memory>

namespace normaris {

inline const QString NoCompanyPrompt = QStringLiteral("処理する会社を指定してください");
inline const QString kMainConnection = QStringLiteral("cn");
inline const QString kSourceConnection = QStringLiteral("cnSource");

class AppState : public QObject {
    Q_OBJECT
public:
    static AppState &instance();

    // Which of the five main commands stay on view when a step closes the company.
    enum class CommandsOnClose {
        HideAll,        // the main window's own close
        HideFirstFour,  // backup and optimisation leave 他社データ取込 on view
        LeaveAsTheyAre, // creating from the open company closes it and touches nothing else
    };

    QString AppPath;
    QString CompanyName;
    QString SourceCompanyName;
    QString CurBunshoKeishikiCode;
    QString CurKiteiCode;
    QString CurBunshoShubetsu;
    QString CurShoCode;
    QString CurJoCode;
    QString CurKouCode;
    QString CurGouCode;
    QString CurMaruCode;
    QString CurIrohaCode;
    QString CurShubetsu;

    // True while 基本設定 is open from the export console: its update then warns that
    // the work data must be made again.
    bool KihonFromExport = false;
    // True when the export console's chosen output has dates: 日付の設定 is offered.
    bool DateSettingEnabled = false;
    // True when the word form is opened from the console, which offers the preview.
    bool WordsPreviewAllowed = false;

    // The composition panels build their rows at load only when their flag is set:
    // every form that hands over to a panel sets it first.
    bool ArticlePanelActive = false;
    bool ParagraphPanelActive = false;
    // The selected panel row (from 0) and the level to add, handed to the add and release forms.
    int CurRowIndex = 0;
    QString AddShubetsu;

    QString companyPanel() const { return m_companyPanel; }
    bool isCompanyOpen() const { return m_companyPanel != NoCompanyPrompt; }
    bool isOpenCompany(const QString &name) const { return isCompanyOpen() && m_companyPanel == name; }

    // The connection to the open company (invalid when none is open).
    static QSqlDatabase cn();

    // Record the company whose connection has just been opened, and show the commands.
    // The company's lock is kept until the company is closed.
    void markCompanyOpen(const QString &name, std::unique_ptr<CompanyLock> lock = nullptr);
    // Close `cn`, record that no company is open, and hide commands as told.
    void closeCompany(CommandsOnClose commands);

    bool commandVisible(int index) const { return m_commandVisible.at(index); }

    // Back to the state at start: no company, commands hidden. Closes `cn`.
    void reset();

signals:
    void changed();

private:
    AppState();
    ~AppState() override;
    QString m_companyPanel = NoCompanyPrompt;
    std::array<bool, 5> m_commandVisible{};
    std::unique_ptr<CompanyLock> m_companyLock;
};

} // namespace normaris
