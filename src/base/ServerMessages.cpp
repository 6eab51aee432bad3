#include "base/ServerMessages.h"

namespace normaris {

namespace {

// A state of five characters, or a class of two; %1 is the place as the user names it
// (『甲社』, or the list of the companies).
struct ServerMessage {
    const char16_t *state;
    const char16_t *text;
};

constexpr ServerMessage kServerMessages[] = {
    {u"25006", u"%1は持ち出し中のため変更できません。持ち帰ってから変更してください。"},
    {u"53100", u"サーバーのディスクがいっぱいのため、%1に書き込めません。サーバーの管理者に連絡してください。"},
    {u"53200", u"サーバーのメモリが足りないため、%1の処理を続けられません。しばらくしてから、やり直してください。"},
    {u"58030", u"サーバーで%1の読み書きにディスクのエラーが起きました。サーバーの管理者に連絡してください。"},
    {u"40001", u"%1の処理が他のプログラムの処理とぶつかりました。もう一度やり直してください。"},
    {u"40P01", u"%1の処理が他のプログラムの処理とぶつかりました。もう一度やり直してください。"},
    {u"55P03", u"%1は他のプログラムが使用中です。他のプログラムの処理が終わってから、やり直してください。"},
    {u"42501", u"サーバーで%1を扱う権限がありません。サーバーの管理者に連絡してください。"},
    {u"28", u"サーバーにログインできません。利用者名とパスワード（~/.pgpass または環境変数 PGPASSWORD）を確かめてください。"},
    {u"08", u"サーバーとの接続が切れたため、%1の処理を続けられません。ネットワークとサーバーの状態を確かめてから、やり直してください。"},
    {u"57", u"サーバーが停止しているため、%1の処理を続けられません。サーバーの管理者に連絡してください。"},
    {u"53", u"サーバーの資源が足りないため、%1の処理を続けられません。しばらくしてから、やり直してください。"},
};

constexpr const char16_t *kOtherFailure =
    u"サーバーで%1の処理中にエラーが発生しました（エラー番号 %2）。やり直しても同じときは、サーバーの管理者に連絡してください。";

} // namespace

QString serverMessage(const QString &state, const QString &place)
{
    for (const ServerMessage &m : kServerMessages) {
        const QString key = QString::fromUtf16(m.state);
        if (state == key || (key.size() == 2 && state.startsWith(key)))
            return QString::fromUtf16(m.text).arg(place);
    }
    return QString::fromUtf16(kOtherFailure).arg(place, state.isEmpty() ? QStringLiteral("不明") : state);
}

} // namespace normaris
