// settings show|set|representative, dates list|add|delete, words list|set

#include "cli/Cli.h"
#include "rulebase/BasicSettings.h"
#include "rulebase/CompanyFiles.h"
#include "base/Database.h"
#include "rulebase/EffectiveDates.h"
#include "rulebase/JapaneseDate.h"
#include "base/AppState.h"
#include "words/EmbeddedWords.h"

namespace normaris::cli {

namespace {

const QString kSettings = QStringLiteral("settings");
const QString kDates = QStringLiteral("dates");
const QString kWords = QStringLiteral("words");

// "NAME=VALUE" words, in order; false (and a usage line) for a word without "=".
bool assignments(Context &c, QList<std::pair<QString, QString>> &out)
{
    for (const QString &w : c.args.words) {
        const qsizetype eq = w.indexOf(u'=');
        if (eq <= 0) {
            c.prompt.failure(QStringLiteral("「%1」は 名前=値 の形ではありません。").arg(w));
            return false;
        }
        out << std::pair{w.left(eq), w.mid(eq + 1)};
    }
    return true;
}

int settingsShow(Context &c)
{
    BasicSettings settings(AppState::cn());
    const QStringList values = settings.load();
    for (qsizetype i = 0; i < values.size(); ++i)
        c.out << settingFields()[i].column << '=' << values[i] << '\n';
    c.out << QStringLiteral("代表労働者=") << settings.representative() << '\n';
    return ExitDone;
}

int settingsSet(Context &c)
{
    QList<std::pair<QString, QString>> given;
    if (!assignments(c, given))
        return ExitFailure;
    BasicSettings settings(AppState::cn());
    QStringList values = settings.load();
    for (const auto &[column, value] : given) {
        const int index = settingIndex(column);
        if (index < 0) {
            c.prompt.failure(QStringLiteral("「%1」という基本設定の項目はありません。").arg(column));
            return ExitFailure;
        }
        // The same checks as the form, and the same keys: a refused value changes nothing.
        for (QChar key : value) {
            if (!BasicSettings::acceptsKey(index, key)) {
                c.prompt.error(QStringLiteral("入力エラー"), QStringLiteral("「%1」は%2に入力できません。").arg(key).arg(column));
                return ExitStopped;
            }
        }
        if (!BasicSettings::checkField(c.prompt, index, value))
            return ExitStopped;
        values[index] = value;
    }
    settings.save(values, settings.representative());
    return ExitDone;
}

int settingsRepresentative(Context &c)
{
    const QString choice = c.args.words.value(0);
    if (choice != u"1" && choice != u"2" && choice != u"3") {
        c.prompt.failure(QStringLiteral("代表労働者は 1（労働組合）、2（従業員代表）、3（パート代表）のどれかです。"));
        return ExitFailure;
    }
    BasicSettings settings(AppState::cn());
    settings.save(settings.load(), choice);
    return ExitDone;
}

int datesList(Context &c)
{
    for (const EffectiveDate &d : EffectiveDates(AppState::cn(), c.args.option(QStringLiteral("--doc"))).list())
        c.out << displayDate(d.date) << '\t' << d.style << '\n';
    return ExitDone;
}

int datesAdd(Context &c)
{
    const QString document = c.args.option(QStringLiteral("--doc"));
    const auto date = EffectiveDates::checkDate(c.prompt, c.args.words.value(0));
    if (!date)
        return ExitStopped;
    EffectiveDates(AppState::cn(), document).add(c.args.options.value(QStringLiteral("--style"), QStringLiteral("1")), *date);
    return ExitDone;
}

int datesDelete(Context &c)
{
    const QString document = c.args.option(QStringLiteral("--doc"));
    const auto date = EffectiveDates::checkDate(c.prompt, c.args.words.value(0));
    if (!date)
        return ExitStopped;
    EffectiveDates dates(AppState::cn(), document);
    QList<qint64> matches;
    for (const EffectiveDate &d : dates.list()) {
        if (d.date == *date)
            matches << d.id;
    }
    if (matches.isEmpty()) {
        c.prompt.plain(QStringLiteral("削除の確認"), displayDate(*date) + QStringLiteral(" はありません。"));
        return ExitStopped;
    }
    if (!c.prompt.question(QStringLiteral("削除の確認"), displayDate(*date) + QStringLiteral(" を削除しますか？")))
        return ExitStopped;
    for (qint64 id : matches)
        dates.remove(id);
    return ExitDone;
}

EmbeddedWords wordsOf(Context &c)
{
    return EmbeddedWords(AppState::cn(), c.args.options.value(QStringLiteral("--style"), QStringLiteral("1")),
                         c.args.option(QStringLiteral("--doc")));
}

int wordsList(Context &c)
{
    for (const EmbeddedWord &w : wordsOf(c).words(c.args.option(QStringLiteral("--chapter")), c.args.option(QStringLiteral("--article"))))
        c.out << w.code << '\t' << w.caption << '\t' << w.word << '\n';
    return ExitDone;
}

int wordsSet(Context &c)
{
    QList<std::pair<QString, QString>> given;
    if (!assignments(c, given))
        return ExitFailure;
    EmbeddedWords words = wordsOf(c);
    const QString chapter = c.args.option(QStringLiteral("--chapter")), article = c.args.option(QStringLiteral("--article"));
    QStringList codes;
    for (const EmbeddedWord &w : words.words(chapter, article))
        codes << w.code;
    for (const auto &[code, text] : given) {
        if (!codes.contains(code)) {
            c.prompt.plain(QStringLiteral("未指定"), QStringLiteral("この条に語句「%1」はありません。").arg(code));
            return ExitStopped;
        }
        if (!EmbeddedWords::checkWord(c.prompt, text))
            return ExitStopped;
    }
    words.save(chapter, article, given);
    return ExitDone;
}

} // namespace

void addSettingsCommands(QList<Command> &commands)
{
    const Option chapter = required(QStringLiteral("--chapter"), QStringLiteral("C"));
    const Option article = required(QStringLiteral("--article"), QStringLiteral("A"));
    commands << companyCommand({kSettings, QStringLiteral("show")}, {}, {}, 0, 0, settingsShow, false);
    commands << companyCommand({kSettings, QStringLiteral("set")}, {}, QStringLiteral("COLUMN=VALUE ..."), 1, 16, settingsSet, false);
    commands << companyCommand({kSettings, QStringLiteral("representative")}, {}, QStringLiteral("1|2|3"), 1, 1, settingsRepresentative,
                               false);
    commands << companyCommand({kDates, QStringLiteral("list")}, {}, {}, 0, 0, datesList, true);
    commands << companyCommand({kDates, QStringLiteral("add")}, {optionalStyle()}, QStringLiteral("DATE"), 1, 1, datesAdd, true);
    commands << companyCommand({kDates, QStringLiteral("delete")}, {}, QStringLiteral("DATE"), 1, 1, datesDelete, true);
    commands << companyCommand({kWords, QStringLiteral("list")}, {optionalStyle(), chapter, article}, {}, 0, 0, wordsList, true);
    commands << companyCommand({kWords, QStringLiteral("set")}, {optionalStyle(), chapter, article}, QStringLiteral("WORDCODE=TEXT ..."), 1,
                               15, wordsSet, true);
}

} // namespace normaris::cli
