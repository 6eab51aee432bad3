#include "export/DocumentRenderer.h"

#include "rulebase/CompositionRow.h"
#include "export/DocumentBody.h"
#include "export/DocumentChecks.h"
#include "export/DocumentTexts.h"
#include "export/FilingForms.h"
#include "export/FrontMatter.h"
#include "export/SettingValues.h"
#include "document/Typist.h"
#include "rulebase/BasicSettings.h"
#include "base/Database.h"
#include "rulebase/EffectiveDates.h"
#include "rulebase/JapaneseDate.h"

namespace normaris {

namespace {

const QString kDataCheck = QStringLiteral("データの確認");

QString formalNameOf(QSqlDatabase db, const QString &style, const QString &document)
{
    const QVariant name = scalar(db, QStringLiteral("SELECT 正式名称 FROM 規程 WHERE 文章形式Code = ? AND Code = ?"), {style, document});
    if (!name.isValid())
        throw Failure(QStringLiteral("規程のデータがありません。"));
    return name.toString();
}

// The closing lines of a set of rules: the oldest date is the day the rules came
// into force, each later one a revision.
void typeSupplementaryProvision(Typist &typist, const QString &style, const QList<EffectiveDate> &dates)
{
    typist.setColor(Typist::Color::Black);
    typist.typeParagraph();
    const QString ending = style == u"1" ? QStringLiteral("から施行する。") : QStringLiteral("から施行します。");
    typist.typeText(QStringLiteral("付則　この規則は") + formatEraDate(dates.first().date) + ending);
    typist.typeParagraph();
    for (qsizetype i = 1; i < dates.size(); ++i) {
        typist.typeText(QStringLiteral("　　　") + formatEraDate(dates[i].date) + QStringLiteral("改訂"));
        typist.typeParagraph();
    }
}

void startDocument(Typist &typist)
{
    typist.setFontName(Typist::kMinchoFont);
    typist.setColor(Typist::Color::Black);
}

} // namespace

DocumentRenderer::DocumentRenderer(QSqlDatabase db, Prompt &prompt) : m_db(std::move(db)), m_prompt(prompt) {}

Outcome DocumentRenderer::stop(const QString &title, const QString &text)
{
    m_prompt.error(title, text);
    return Outcome::Stopped;
}

Outcome DocumentRenderer::render(Typist &typist, const QString &style, const QString &document, const RenderOptions &options)
{
    try {
        if (options.kind == ExportKind::Filing)
            return renderFiling(typist, options);
        return renderDocument(typist, style, document, options);
    } catch (const Failure &failure) {
        m_prompt.failure(failure.text());
    } catch (const std::exception &failure) {
        m_prompt.failure(QString::fromUtf8(failure.what()));
    }
    return Outcome::Failed;
}

Outcome DocumentRenderer::renderDocument(Typist &typist, const QString &style, const QString &document, const RenderOptions &options)
{
    if (style.isEmpty())
        return stop(QStringLiteral("文章形式の指定"), QStringLiteral("文章形式を指定してください。"));
    if (document.isEmpty())
        return stop(QStringLiteral("種別の指定"), QStringLiteral("規則・規程の種別を指定してください。"));
    // Read once: a document can have tens of thousands of rows, and every test
    // while typing is made on these.
    const QList<CompositionRow> rows = readWorkRows(m_db, kOutputRowsTable, style, document);
    if (rows.isEmpty())
        return stop(kDataCheck, QStringLiteral("データがありません。"));
    // Headings alone would give a document without a word of rules.
    if (!hasClauses(rows))
        return stop(kDataCheck, QStringLiteral("条文のデータがありません。条文を選択してからデータ作成を行ってください。"));
    const QList<EffectiveDate> dates = EffectiveDates(m_db, document).list();
    if (dates.isEmpty())
        return stop(kDataCheck, QStringLiteral("日付のデータがありません。"));
    const std::optional<SettingValues> settings = SettingValues::read(m_db);
    if (!settings)
        return stop(kDataCheck, QStringLiteral("基本設定のデータがありません。"));

    // Adds and releases can leave numbers such as 第０条, or 第３条 before 第１条:
    // the user decides whether such a document is printed.
    if (const CompositionRow *row = firstOutOfOrder(rows)) {
        const QString heading = row->level == Level::Chapter ? chapterHeading(*row) : articleHeading(*row);
        if (!m_prompt.question(
                QStringLiteral("番号の確認"),
                QStringLiteral("「%1」から番号が１、２、３…の順になっていません。このまま文書を作成しますか？").arg(heading)))
            return Outcome::Stopped;
    }

    const bool agreement = options.kind == ExportKind::Agreement;
    const bool cover = !agreement && (options.cover == CoverChoice::Both || options.cover == CoverChoice::CoverOnly);
    const bool contents = !agreement && (options.cover == CoverChoice::Both || options.cover == CoverChoice::TocOnly);
    const QString party = agreement ? BasicSettings(m_db).representative() : QString();

    const QString formalName = cover || contents ? formalNameOf(m_db, style, document) : QString();

    startDocument(typist);
    if (cover)
        typeCover(typist, formalName, settings->value(QStringLiteral("事業所名")));
    if (contents)
        typeTableOfContents(typist, rows, formalName);
    DocumentBody(typist, rows, options.showFirstParagraphNumber, agreement).type();
    if (agreement)
        FilingForms(typist, *settings, party).typeSignatureBlock();
    else
        typeSupplementaryProvision(typist, style, dates);
    return Outcome::Done;
}

Outcome DocumentRenderer::renderFiling(Typist &typist, const RenderOptions &options)
{
    std::optional<SettingValues> settings = SettingValues::read(m_db);
    if (!settings)
        return stop(kDataCheck, QStringLiteral("基本設定のデータがありません。"));
    const QString party = BasicSettings(m_db).representative();
    startDocument(typist);
    FilingForms(typist, std::move(*settings), party).typeNotificationAndOpinion(options.filingIsChange);
    return Outcome::Done;
}

} // namespace normaris
