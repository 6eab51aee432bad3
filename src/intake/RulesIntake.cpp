#include "intake/RulesIntake.h"

#include "base/Database.h"
#include "base/Failure.h"
#include "composition/ClauseAdder.h"
#include "rulebase/CompositionRow.h"
#include "composition/DocumentList.h"
#include "dictionary/DocumentMaster.h"
#include "rulebase/BasicSettings.h"

#include <algorithm>

namespace normaris::intake {

namespace {

// The steps the intake is made of speak through this: the adds' closing "確認" is not
// shown, and a step's own "取消" neither, since the intake as a whole is cancelled.
class QuietSteps : public Prompt {
public:
    explicit QuietSteps(Prompt &prompt) : m_prompt(prompt) {}
    void message(Icon icon, const QString &title, const QString &text) override
    {
        if (title == u"取消")
            m_reason = text.section(u'\n', 1); // what happened, below the fixed text
        else if (title != u"確認")
            m_prompt.message(icon, title, text);
    }
    bool question(const QString &title, const QString &text) override { return m_prompt.question(title, text); }
    // Why an inner step was cancelled, as its box said; empty when it did not say.
    QString reason() const { return m_reason; }

private:
    Prompt &m_prompt;
    QString m_reason;
};

// Every entry comes into use, then the 前文 and each chapter are added below the last
// row of the composition as the user would add them.
Outcome compose(Prompt &prompt, QSqlDatabase db, const FoundRules &rules, const QString &style)
{
    const QString document = rules.source.document;
    for (const LevelInfo &info : kLevels) {
        if (info.placeDepth < 2)
            continue;
        execSql(
            db,
            QStringLiteral("UPDATE \"%1\" SET 選択フラグ = 1 WHERE 文章形式Code = ? AND 規程Code = ?").arg(QString::fromUtf16(info.table)),
            {style, document});
    }
    DocumentList(db).addToList(style, document);
    ClauseAdder adder(db, prompt);
    QList<std::pair<Level, QString>> adds;
    if (rules.source.preamble)
        adds << std::pair{Level::Preamble, QStringLiteral("01")};
    for (const dictionary::SourceEntry &e : rules.source.entries) {
        if (e.level == Level::Chapter)
            adds << std::pair{Level::Chapter, e.codes[0]};
    }
    for (const auto &[level, code] : adds) {
        const QList<CompositionRow> rows = readArticleRows(db, style, document);
        const CompositionRow &last = rows.last();
        const AddRequest request{style, document, last.level, level, false, int(rows.size()) - 1, last.codes, code};
        const Outcome added = adder.add(request);
        if (added != Outcome::Done)
            return added;
    }
    return Outcome::Done;
}

} // namespace

QString defaultName(const FoundRules &rules)
{
    QString name = rules.title;
    name.remove(u' ').remove(u'　');
    return name;
}

QString firstFreeCode(QSqlDatabase db, const QString &style)
{
    const QList<dictionary::DocumentRecord> documents = dictionary::DocumentMaster(db, style).documents();
    for (int n = 70; n < 99; ++n) {
        if (std::none_of(documents.begin(), documents.end(), [n](const dictionary::DocumentRecord &d) { return d.code.toInt() == n; }))
            return QString::number(n);
    }
    return QStringLiteral("99");
}

bool checkIntakeCode(Prompt &prompt, QSqlDatabase db, const QString &style, const QString &code)
{
    if (!isUserCode(Level::Document, code)) {
        prompt.error(QStringLiteral("入力エラー"), QStringLiteral("取り込む規程のCodeは70～99で指定してください。"));
        return false;
    }
    if (dictionary::DocumentMaster(db, style).document(code)) {
        prompt.error(QStringLiteral("入力エラー"),
                     QStringLiteral("規程「%1」は既にあります。空いているCodeを指定してください。").arg(code));
        return false;
    }
    return true;
}

Outcome writeRules(Prompt &prompt, QSqlDatabase db, const FoundRules &rules, const IntakeRequest &request)
{
    if (rules.source.entries.isEmpty()) {
        prompt.error(QStringLiteral("取込エラー"), QStringLiteral("ファイル「%1」には条が見つかりません。").arg(rules.source.file));
        return Outcome::Stopped;
    }
    FoundRules marked = rules;
    markCompanyName(marked, request.companyName);
    QuietSteps quiet(prompt);
    return runStep(prompt, db, [&] {
        if (!checkIntakeCode(prompt, db, request.style, request.code))
            return Outcome::Stopped;
        dictionary::DocumentMaster master(db, request.style);
        dictionary::DocumentRecord record;
        record.code = request.code;
        record.name = request.name;
        record.formalName = request.formalName.isEmpty() ? request.name : request.formalName;
        Outcome outcome = master.update(quiet, dictionary::DocumentMaster::Mode::Add, {}, record);
        if (outcome == Outcome::Done)
            outcome = dictionary::putEntries(quiet, db, request.style, marked.source);
        if (outcome == Outcome::Done)
            outcome = compose(quiet, db, marked, request.style);
        // A step that failed has undone itself: the intake is undone as a whole.
        if (outcome == Outcome::Failed)
            throw Failure(quiet.reason().isEmpty() ? QStringLiteral("取込の書き込みに失敗しました。") : quiet.reason());
        if (outcome == Outcome::Done && !request.companyName.isEmpty()) {
            // 事業所名 is set when it is not yet.
            BasicSettings settings(db);
            QStringList values = settings.load();
            if (values[0].isEmpty() || values[0] == settingFields()[0].marker) {
                values[0] = request.companyName;
                settings.save(values, settings.representative());
            }
        }
        return outcome;
    });
}

} // namespace normaris::intake
