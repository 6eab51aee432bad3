#pragma once
// The shared application state: what every dialog reads and writes to hand over
// to the next one. One instance lives for the whole run.
//
// The company panel's text is the record of what is open: a company name, or
// NoCompanyPrompt. Every test of "is a company open" and "is this the open
// company" compares with it. The data connection `cn` is open exactly when a
// company is.

#include "base/CompanyLock.h"
#include "base/DataLayout.h"
#include "base/Levels.h"

#include <QObject>
#include <QSqlDatabase>
#include <QString>
#include <memory>
#include <optional>

namespace normaris {

inline const QString NoCompanyPrompt = QStringLiteral("処理する会社を指定してください");
inline const QString kMainConnection = QStringLiteral("cn");
inline const QString kSourceConnection = QStringLiteral("cnSource");

class AppState : public QObject {
    Q_OBJECT
public:
    static AppState &instance();

    // Why a step closed the open company: the main window decides from it what to show.
    enum class ClosedBy {
        MainWindow,  // the main window's own close, or the opening of another company
        Maintenance, // a backup or an optimisation of the open company
        Copying,     // a new company made from the open one
    };

    QString AppPath;
    // The store the program was started on (--store or NORMARIS_STORE): empty for the
    // Data folder beneath AppPath.
    QString Store;
    // The program folder and the store, as every company step takes them.
    DataLayout layout() const { return DataLayout{AppPath, Store}; }
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
    Level CurShubetsu = Level::Document; // the level of the selected panel row
    // The document chosen in the dictionary navigator, for the pickers below it.
    QString DicKiteiCode;

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
    // The selected panel row (from 0) and the level to add (a new first 項 apart),
    // handed to the add and release forms.
    int CurRowIndex = 0;
    Level AddShubetsu = Level::Document;
    bool AddFirstParagraph = false;
    // The row each panel was left from for an add, a release or the panel below (-1: none):
    // the rebuilt panel comes back at that row rather than at its top.
    int ArticlePanelRow = -1;
    int ParagraphPanelRow = -1;

    QString companyPanel() const { return m_companyPanel; }
    bool isCompanyOpen() const { return m_companyPanel != NoCompanyPrompt; }
    bool isOpenCompany(const QString &name) const { return isCompanyOpen() && m_companyPanel == name; }

    // The connection to the open company (invalid when none is open).
    static QSqlDatabase cn();

    // Record the company whose connection has just been opened. The company's lock is
    // kept until the company is closed.
    void markCompanyOpen(const QString &name, std::unique_ptr<CompanyHold> lock = nullptr);
    // Close `cn`, release the company's lock, and record that no company is open and why.
    void closeCompany(ClosedBy why);
    // Why the company was last closed; nothing while one is open, at start and after reset.
    std::optional<ClosedBy> lastClose() const { return m_lastClose; }

    // Back to the state at start: no company. Closes `cn`.
    void reset();

signals:
    void changed();

private:
    AppState();
    ~AppState() override;
    QString m_companyPanel = NoCompanyPrompt;
    std::optional<ClosedBy> m_lastClose;
    std::unique_ptr<CompanyHold> m_companyLock;
};

} // namespace normaris
