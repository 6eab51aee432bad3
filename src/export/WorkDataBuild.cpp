#include "export/WorkDataBuild.h"

#include "rulebase/CompositionRow.h"
#include "export/DictionaryTexts.h"
#include "export/WorkDataAge.h"
#include "base/Database.h"
#include "base/BusyCursor.h"

#include <QHash>

namespace normaris {

namespace {

QString otherStyleOf(const QString &style) { return style == u"1" ? QStringLiteral("2") : QStringLiteral("1"); }

// The question before the other style's work data of the same code are dropped.
QString otherStyleQuestion(const QString &style, bool agreement)
{
    const QString kind = agreement ? QStringLiteral("協約・協定") : QStringLiteral("規則・規程");
    if (style == u"1")
        return QStringLiteral("ですます調の同Codeの%1がデータ作成済です。\n"
                              "そのデータを未選択の状態に戻し、である調のデータと置き換えますか？\n"
                              "※ですます調はリストから外します！")
            .arg(kind);
    return QStringLiteral("である調の同Codeの%1がデータ作成済です。\n"
                          "そのデータを未選択の状態に戻し、ですます調のデータと置き換えますか？\n"
                          "※である調はリストから外します！")
        .arg(kind);
}

void deleteWorkRows(QSqlDatabase db, const QString &table, const QString &style, const QString &document)
{
    execSql(db, QStringLiteral("DELETE FROM %1 WHERE 文章形式Code = ? AND 規程Code = ?").arg(table), {style, document});
}

// In the output tables a clause in one piece has no 結合 and a row without a template no テンプレート.
QString emptyForZero(const QString &code) { return code == u"0" ? QString() : code; }

} // namespace

Outcome WorkDataBuild::build(const QString &style, const QString &document)
{
    bool declined = false;
    // The rows are counted inside the write that replaces them.
    const Outcome outcome = runStep(m_prompt, m_db, [&] {
        if (scalar(m_db, QStringLiteral("SELECT count(*) FROM %1 WHERE 文章形式Code = ? AND 規程Code = ?").arg(kArticleRowsTable),
                   {style, document})
                .toInt()
            == 0) {
            m_prompt.error(QStringLiteral("データの確認"), QStringLiteral("データがありません。"));
            return Outcome::Stopped;
        }
        BusyCursor busy;
        if (!replaceOtherStyle(style, document)) {
            declined = true; // the transaction ends with nothing changed
            return Outcome::Stopped;
        }
        freeze(style, document);
        writeOutputRows(style, document);
        WorkDataAge(m_db, m_prompt).record(WorkDataStep::Build, style, document);
        return Outcome::Done;
    });
    if (declined) {
        m_prompt.information(QStringLiteral("確認"), QStringLiteral("処理を実行しません。"));
        return Outcome::Stopped;
    }
    if (outcome != Outcome::Done)
        return outcome;
    m_prompt.plain(QStringLiteral("処理完了"), QStringLiteral("データ作成が完了しました。"));
    return Outcome::Done;
}

bool WorkDataBuild::replaceOtherStyle(const QString &style, const QString &document)
{
    const QString other = otherStyleOf(style);
    if (scalar(m_db, QStringLiteral("SELECT count(*) FROM %1 WHERE 文章形式Code = ? AND 規程Code = ?").arg(kFrozenRowsTable),
               {other, document})
            .toInt()
        == 0)
        return true;
    const bool agreement =
        scalar(m_db, QStringLiteral("SELECT 文章種別 FROM 規程 WHERE 文章形式Code = ? AND Code = ?"), {style, document}).toString() == u"2";
    if (!m_prompt.question(QStringLiteral("置換の確認"), otherStyleQuestion(style, agreement)))
        return false;
    deleteWorkRows(m_db, kFrozenRowsTable, other, document);
    deleteWorkRows(m_db, kOutputRowsTable, other, document);
    // Its composition rows stay, for when the user puts it back on the list.
    execSql(m_db, QStringLiteral("UPDATE 規程 SET 選択フラグ = 0 WHERE 文章形式Code = ? AND Code = ?"), {other, document});
    return true;
}

// 作成データ置換前: the rows down to 条, each 条 followed by its clauses, numbered anew from 1.
void WorkDataBuild::freeze(const QString &style, const QString &document)
{
    deleteWorkRows(m_db, kFrozenRowsTable, style, document);
    QHash<QString, QList<CompositionRow>> clausesOfArticle;
    for (const CompositionRow &r : readWorkRows(m_db, kClauseRowsTable, style, document))
        clausesOfArticle[r.codes[0] + u'|' + r.codes[1]] << r;

    QList<CompositionRow> frozen;
    auto append = [&frozen](CompositionRow r) {
        r.order = int(frozen.size()) + 1;
        r.join = emptyForZero(r.join);
        r.templateCode = emptyForZero(r.templateCode);
        frozen << r;
    };
    for (const CompositionRow &r : readArticleRows(m_db, style, document)) {
        append(r);
        if (r.level == Level::Article) {
            for (const CompositionRow &clause : clausesOfArticle.value(r.codes[0] + u'|' + r.codes[1]))
                append(clause);
        }
    }
    insertWorkRows(m_db, kFrozenRowsTable, frozen);
}

// 作成データ: the frozen rows with the dictionary's current text, and the closing row.
void WorkDataBuild::writeOutputRows(const QString &style, const QString &document)
{
    deleteWorkRows(m_db, kOutputRowsTable, style, document);
    const DictionaryTexts dictionary(m_db, style, document);
    QList<CompositionRow> output = readWorkRows(m_db, kFrozenRowsTable, style, document);
    for (CompositionRow &r : output) {
        const bool segmented = isClauseLevel(r.level) || r.level == Level::Preamble;
        const std::optional<DictionaryText> source =
            dictionary.find(r.level, r.codes.mid(0, placeDepth(r.level)), segmented ? r.join : QString());
        if (!source)
            throw DbError(QStringLiteral("辞書に %1 の行がありません（%2）。").arg(dictionaryTable(r.level), r.codes.join(u' ').trimmed()));
        if (segmented)
            r.lineBreak = source->lineBreak;
        r.text = r.templateCode.isEmpty() ? source->text : QString();
        r.formalName.clear();
    }
    CompositionRow closing;
    closing.order = output.isEmpty() ? 1 : output.last().order + 1;
    closing.level = Level::Closing;
    closing.document = document;
    closing.join.clear();
    closing.templateCode.clear();
    closing.text = QStringLiteral("ダミーの行");
    closing.style = style;
    output << closing;
    insertWorkRows(m_db, kOutputRowsTable, output);
}

} // namespace normaris
