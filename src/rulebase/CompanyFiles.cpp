#include "rulebase/CompanyFiles.h"

#include "base/AppState.h"
#include "base/BusyCursor.h"
#include "base/FieldChecks.h"
#include "rulebase/CompanyNames.h"
#include "rulebase/CompanyStore.h"

namespace normaris {

namespace {

const QString kRename = QStringLiteral("名前の変更");
const QString kSelectTitle = QStringLiteral("会社指定の確認");
const QString kDeleteTitle = QStringLiteral("会社削除の確認");
const QString kProbeConnection = QStringLiteral("normaris_probe");

} // namespace

bool CompanyFiles::acceptName(const QString &name)
{
    if (name.isEmpty()) {
        m_prompt.plain(kRename, QStringLiteral("名前を入力してください。"));
        return false;
    }
    if (CP932Length(name) > kCompanyNameLimit) {
        m_prompt.plain(kRename, QStringLiteral("会社名の長さが制限(%1)を越えています。").arg(kCompanyNameLimit));
        return false;
    }
    return !CheckCompanyName(m_prompt, name);
}

Outcome CompanyFiles::acceptNewName(const QString &name)
{
    if (!acceptName(name))
        return Outcome::Stopped;
    QStringList companies;
    try {
        companies = companiesOf(m_layout);
    } catch (const Failure &e) {
        // The server could not be asked: no name is known to be free.
        m_prompt.failure(e.text());
        return Outcome::Failed;
    }
    if (companies.contains(name)) {
        m_prompt.plain(kRename, QStringLiteral("名前が重複しています。"));
        return Outcome::Stopped;
    }
    return Outcome::Done;
}

Outcome CompanyFiles::createFromSeed(const QString &name)
{
    if (const Outcome accepted = acceptNewName(name); accepted != Outcome::Done)
        return accepted;
    return create(name, [&](const CompanyStore &store) { store.addFromFile(name, m_layout.seedFile(), true); });
}

Outcome CompanyFiles::createFromCompany(const QString &name, const QString &source)
{
    if (source.isEmpty()) {
        m_prompt.plain(QStringLiteral("未選択"), QStringLiteral("ソースファイルを選択してください。"));
        return Outcome::Stopped;
    }
    if (const Outcome accepted = acceptNewName(name); accepted != Outcome::Done)
        return accepted;
    if (const auto refused = checkKnownCompany(m_prompt, m_layout, QStringLiteral("未選択"), source))
        return *refused;
    AppState &state = AppState::instance();
    if (state.isOpenCompany(source)) {
        if (!m_prompt.question(QStringLiteral("データ指定の確認"),
                               QStringLiteral("現在使用中の") + quotedName(source) + QStringLiteral("を閉じますか？")))
            return Outcome::Stopped;
        state.closeCompany(AppState::ClosedBy::Copying);
    }
    return create(name, [&](const CompanyStore &store) {
        const auto held = store.hold(source);
        store.addFromCompany(name, source, true);
    });
}

Outcome CompanyFiles::create(const QString &name, const std::function<void(const CompanyStore &)> &make)
{
    const auto store = CompanyStore::of(m_layout);
    const QString question = store->isServer() ? QStringLiteral("サーバーに") + quotedName(name) + QStringLiteral("のデータを作成します。")
                                               : QStringLiteral("新しいフォルダ") + quotedName(name)
                                                     + QStringLiteral("を作成し、その中にデータファイルを作成します。");
    if (!m_prompt.question(QStringLiteral("ファイル作成の確認"), question))
        return Outcome::Stopped;
    try {
        BusyCursor busy;
        make(*store);
    } catch (const CompanyInUse &e) {
        m_prompt.failure(e.text());
        return Outcome::Stopped;
    } catch (const std::exception &e) {
        m_prompt.failure(QString::fromUtf8(e.what()));
        return Outcome::Failed;
    }
    return Outcome::Done;
}

Outcome CompanyFiles::select(const QString &name)
{
    if (name.isEmpty()) {
        m_prompt.plain(kSelectTitle, QStringLiteral("処理する会社を指定してください。"));
        return Outcome::Stopped;
    }
    if (const auto refused = checkKnownCompany(m_prompt, m_layout, kSelectTitle, name))
        return *refused;
    if (!m_prompt.question(kSelectTitle, quotedName(name) + QStringLiteral("を指定します。")))
        return Outcome::Stopped;
    return open(name);
}

Outcome CompanyFiles::open(const QString &name)
{
    if (const auto refused = checkKnownCompany(m_prompt, m_layout, kSelectTitle, name))
        return *refused;
    AppState &state = AppState::instance();
    std::unique_ptr<CompanyHold> held;
    try {
        BusyCursor busy;
        const auto store = CompanyStore::of(m_layout);
        // The company open now holds its own lock: reopening it starts from closed.
        if (state.isOpenCompany(name))
            state.closeCompany(AppState::ClosedBy::MainWindow);
        held = store->hold(name);
        // Prove the company first, so that a refusal leaves the open company as it was.
        store->open(name, kProbeConnection, OpenMode::ReadWrite);
        closeDatabase(kProbeConnection);
        if (state.isCompanyOpen())
            state.closeCompany(AppState::ClosedBy::MainWindow);
        store->open(name, kMainConnection, OpenMode::ReadWrite);
    } catch (const CompanyInUse &e) {
        m_prompt.failure(e.text());
        return Outcome::Stopped;
    } catch (const std::exception &e) {
        closeDatabase(kProbeConnection);
        m_prompt.failure(QString::fromUtf8(e.what()));
        return Outcome::Failed;
    }
    state.markCompanyOpen(name, std::move(held));
    return Outcome::Done;
}

Outcome CompanyFiles::remove(const QString &name)
{
    if (name.isEmpty()) {
        m_prompt.plain(kDeleteTitle, QStringLiteral("削除する会社を選択してください。"));
        return Outcome::Stopped;
    }
    if (const auto refused = checkKnownCompany(m_prompt, m_layout, kDeleteTitle, name))
        return *refused;
    if (AppState::instance().isOpenCompany(name)) {
        m_prompt.plain(kDeleteTitle, quotedName(name) + QStringLiteral("は現在使用中なので削除できません。"));
        return Outcome::Stopped;
    }
    if (!m_prompt.question(kDeleteTitle, quotedName(name) + QStringLiteral("を削除します。")))
        return Outcome::Stopped;
    try {
        BusyCursor busy;
        const auto store = CompanyStore::of(m_layout);
        const auto held = store->hold(name);
        store->remove(name);
    } catch (const CompanyInUse &e) {
        m_prompt.failure(e.text());
        return Outcome::Stopped;
    } catch (const std::exception &e) {
        m_prompt.failure(QString::fromUtf8(e.what()));
        return Outcome::Failed;
    }
    return Outcome::Done;
}

} // namespace normaris
