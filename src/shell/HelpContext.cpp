#include "shell/HelpContext.h"

#include <QHash>

namespace normaris {

const QHash<QString, int> &helpContexts()
{
    static const QHash<QString, int> contexts = {
        {QStringLiteral("frmDBSakusei"), 2},
        {QStringLiteral("frmDBSakusei2"), 2},
        {QStringLiteral("frmDBSakuseiSub"), 2},
        {QStringLiteral("frmDBSentaku"), 3},
        {QStringLiteral("frmDBSakujyo"), 4},
        {QStringLiteral("frmBackup"), 5},
        {QStringLiteral("frmSaiteki"), 6},
        {QStringLiteral("frmDicUpdate"), 7},
        {QStringLiteral("frmDBYomikomi"), 8},
        {QStringLiteral("frmMochidashi"), 9},
        {QStringLiteral("frmMochikaeri"), 11},
        {QStringLiteral("frmKakusyusettei"), 10},
        {QStringLiteral("frmKihon"), 15},
        {QStringLiteral("frmSekoubi"), 20},
        {QStringLiteral("frmDicsentaku"), 100},
        {QStringLiteral("frmDicsentakuSub"), 101},
        {QStringLiteral("frmGenkouTorikomi"), 102},
        {QStringLiteral("frmJoubunKensaku"), 103},
        {QStringLiteral("frmDic01"), 110},
        {QStringLiteral("frmDic02"), 111},
        {QStringLiteral("frmDic03"), 120},
        {QStringLiteral("frmDic02_2"), 181},
        {QStringLiteral("frmDic_kihongoku"), 187},
        {QStringLiteral("frmDic_goku"), 188},
        {QStringLiteral("frmDic_bangou"), 189},
        {QStringLiteral("frmMakesentaku"), 200},
        {QStringLiteral("frmMakesentakuSub"), 201},
        {QStringLiteral("frmMakesentakuSub2"), 202},
        {QStringLiteral("frmMakesentaku_tsuika"), 210},
        {QStringLiteral("frmMakesentaku_kaijo"), 211},
        {QStringLiteral("frmExport"), 300},
        {QStringLiteral("frmGokusentakuSub"), 310},
        {QStringLiteral("frmGokusentaku_01"), 311},
        {QStringLiteral("frmCopy01"), 400},
        {QStringLiteral("frmCopy02"), 401},
        {QStringLiteral("frmCopy03"), 402},
    };
    return contexts;
}

int helpContext(const QString &formName) { return helpContexts().value(formName, 0); }

QString helpPagePath(const QString &appPath, int context)
{
    return appPath + QStringLiteral("/help/") + QString::number(context) + QStringLiteral(".html");
}

} // namespace normaris
