#include "legal/Requirements.h"

#include "base/AppState.h"
#include "base/DataLayout.h"
#include "base/Failure.h"

#include <QFile>
#include <QRegularExpression>

#include <utility>

namespace normaris::legal {

namespace {

enum Column {
    ColCode,
    ColDocument,
    ColKind,
    ColLaw,
    ColCaption,
    ColEffective,
    ColLapse,
    ColPlaces,
    ColPattern,
    ColPatternCaption,
    ColWord,
    ColComparison,
    ColBound,
    ColBoundText,
    ColCoverage,
    ColumnCount
};

const std::pair<const char16_t *, RequirementKind> kKinds[] = {
    {u"絶対", RequirementKind::Absolute}, {u"相対", RequirementKind::Relative}, {u"限度", RequirementKind::Bound}};
const std::pair<const char16_t *, Comparison> kComparisons[] = {
    {u"未満", Comparison::Below}, {u"以下", Comparison::AtMost}, {u"以上", Comparison::AtLeast}};

template<typename T, size_t N>
bool lookUp(const std::pair<const char16_t *, T> (&table)[N], const QString &name, T &value)
{
    for (const auto &[text, v] : table) {
        if (name == QString::fromUtf16(text)) {
            value = v;
            return true;
        }
    }
    return false;
}

// 前文, 章04, 条0030, 条0030項02, 条0030項02号03, …丸01, …イロハ01: the level names of the sources.
const std::pair<const char16_t *, Level> kPlaceLevels[] = {{u"章", Level::Chapter}, {u"条", Level::Article}, {u"項", Level::Paragraph},
                                                           {u"号", Level::Item},    {u"丸", Level::Maru},    {u"イロハ", Level::Iroha}};

bool parsePlace(const QString &text, RequirementPlace &place)
{
    place = RequirementPlace{};
    place.text = text;
    if (text == u"前文") {
        place.level = Level::Preamble;
        return true;
    }
    static const QRegularExpression part(QStringLiteral("(章|条|項|号|丸|イロハ)([0-9]+)"));
    qsizetype at = 0;
    Level last = Level::Document;
    auto it = part.globalMatch(text);
    while (it.hasNext()) {
        const auto m = it.next();
        if (m.capturedStart() != at)
            return false;
        at = m.capturedEnd();
        Level level = Level::Document;
        lookUp(kPlaceLevels, m.captured(1), level);
        // 章 stands alone; the others follow their parent from 条 down, one level each.
        const bool next = level == Level::Chapter   ? last == Level::Document && at == text.size()
                          : level == Level::Article ? last == Level::Document
                                                    : int(level) == int(last) + 1;
        if (!next || m.captured(2).size() != levelInfo(level).codeWidth)
            return false;
        place.codes[placeDepth(level) - 1] = m.captured(2);
        last = level;
    }
    place.level = last;
    return at == text.size() && last != Level::Document;
}

QDate parseDate(const QString &text, bool &ok)
{
    ok = true;
    if (text.isEmpty())
        return {};
    const QDate d = QDate::fromString(text, Qt::ISODate);
    ok = d.isValid();
    return d;
}

} // namespace

bool RequirementPlace::covers(Level rowLevel, const QStringList &rowCodes) const
{
    if (level == Level::Preamble || rowLevel == Level::Preamble)
        return level == rowLevel;
    if (placeDepth(rowLevel) < placeDepth(level))
        return false;
    for (int i = 0; i < placeDepth(level); ++i) {
        if (!codes[i].isEmpty() && codes[i] != rowCodes.value(i))
            return false;
    }
    return true;
}

bool Requirement::inForceOn(const QDate &date) const
{
    return (!effective.isValid() || effective <= date) && (!lapse.isValid() || date < lapse);
}

bool Requirement::withinBound(double value) const
{
    switch (comparison) {
    case Comparison::Below: return value < bound;
    case Comparison::AtMost: return value <= bound;
    case Comparison::AtLeast: return value >= bound;
    }
    return false;
}

const QStringList &requirementColumns()
{
    static const QStringList columns = {QStringLiteral("Code"),       QStringLiteral("規程"),       QStringLiteral("区分"),
                                        QStringLiteral("法令"),       QStringLiteral("事項"),       QStringLiteral("施行日"),
                                        QStringLiteral("失効日"),     QStringLiteral("場所"),       QStringLiteral("語"),
                                        QStringLiteral("語の見出し"), QStringLiteral("語句"),       QStringLiteral("比較"),
                                        QStringLiteral("限度"),       QStringLiteral("限度の表示"), QStringLiteral("対応表")};
    return columns;
}

QList<Requirement> parseRequirements(const QString &text, QList<RequirementError> &errors)
{
    QList<Requirement> table;
    bool header = false;
    const QStringList lines = text.split(u'\n');
    for (int i = 0; i < lines.size(); ++i) {
        const int lineNo = i + 1;
        QString line = lines[i];
        if (line.endsWith(u'\r'))
            line.chop(1);
        if (line.trimmed().isEmpty() || line.startsWith(u'#'))
            continue;
        const QStringList cells = line.split(u'\t');
        auto fail = [&](const QString &message) { errors << RequirementError{lineNo, message}; };
        if (!header) {
            header = true;
            if (cells != requirementColumns())
                fail(QStringLiteral("列は「%1」の順にしてください").arg(requirementColumns().join(u' ')));
            continue;
        }
        if (cells.size() != ColumnCount) {
            fail(QStringLiteral("列の数が %1 ではありません（%2）").arg(ColumnCount).arg(cells.size()));
            continue;
        }
        Requirement r;
        r.line = lineNo;
        r.code = cells[ColCode];
        r.document = cells[ColDocument];
        r.law = cells[ColLaw];
        r.caption = cells[ColCaption];
        r.pattern = cells[ColPattern];
        r.patternCaption = cells[ColPatternCaption];
        r.word = cells[ColWord];
        r.boundText = cells[ColBoundText];
        r.coverageRow = cells[ColCoverage];
        static const QRegularExpression codeForm(QStringLiteral("^[0-9]{2}-[0-9]{3}$"));
        if (!codeForm.match(r.code).hasMatch() || !r.code.startsWith(r.document + u'-'))
            fail(QStringLiteral("Code「%1」は規程の Code、ハイフン、３桁の番号にしてください").arg(r.code));
        for (const Requirement &other : std::as_const(table)) {
            if (other.code == r.code)
                fail(QStringLiteral("Code「%1」は %2 行目にもあります").arg(r.code).arg(other.line));
        }
        if (!lookUp(kKinds, cells[ColKind], r.kind))
            fail(QStringLiteral("区分「%1」は 絶対、相対、限度 のどれかにしてください").arg(cells[ColKind]));
        if (r.caption.isEmpty())
            fail(QStringLiteral("事項がありません"));
        bool ok = true;
        r.effective = parseDate(cells[ColEffective], ok);
        if (!ok)
            fail(QStringLiteral("施行日「%1」は YYYY-MM-DD にしてください").arg(cells[ColEffective]));
        r.lapse = parseDate(cells[ColLapse], ok);
        if (!ok)
            fail(QStringLiteral("失効日「%1」は YYYY-MM-DD にしてください").arg(cells[ColLapse]));
        for (const QString &written : cells[ColPlaces].split(u' ', Qt::SkipEmptyParts)) {
            RequirementPlace place;
            if (parsePlace(written, place))
                r.places << place;
            else
                fail(QStringLiteral("場所「%1」が読めません（前文、章04、条0030、条0030項02号03 のように書きます）").arg(written));
        }
        if (!r.pattern.isEmpty() && !QRegularExpression(r.pattern).isValid())
            fail(QStringLiteral("語「%1」は正規表現として読めません").arg(r.pattern));
        if (r.pattern.isEmpty() != r.patternCaption.isEmpty())
            fail(QStringLiteral("語と語の見出しは両方書くか、両方空けてください"));
        if (r.kind == RequirementKind::Bound) {
            if (r.word.size() != 4 || !lookUp(kComparisons, cells[ColComparison], r.comparison))
                fail(QStringLiteral("限度の行には語句の Code（４桁）と比較（未満、以下、以上）が要ります"));
            r.bound = cells[ColBound].toDouble(&ok);
            if (!ok || r.boundText.isEmpty())
                fail(QStringLiteral("限度の行には限度の数と限度の表示が要ります"));
        } else {
            if (!r.word.isEmpty() || !cells[ColComparison].isEmpty() || !cells[ColBound].isEmpty())
                fail(QStringLiteral("語句と限度は区分が限度の行にだけ書きます"));
            if (cells[ColPlaces].trimmed().isEmpty())
                fail(QStringLiteral("場所がありません"));
        }
        table << r;
    }
    if (!header)
        errors << RequirementError{1, QStringLiteral("列の名前の行がありません")};
    return table;
}

QList<Requirement> loadRequirements(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw Failure(QStringLiteral("法令要件の表「%1」を読めません。").arg(path));
    QList<RequirementError> errors;
    QList<Requirement> table = parseRequirements(QString::fromUtf8(file.readAll()), errors);
    if (!errors.isEmpty())
        throw Failure(QStringLiteral("法令要件の表「%1」の %2 行目: %3").arg(path).arg(errors[0].line).arg(errors[0].message));
    return table;
}

QString requirementsFile(const QString &appPath) { return DataLayout{appPath}.dataDir() + QStringLiteral("/法令要件.tsv"); }

const QList<Requirement> &shippedRequirements()
{
    static QString loadedFrom;
    static QList<Requirement> table;
    const QString path = requirementsFile(AppState::instance().AppPath);
    if (loadedFrom != path) {
        table = loadRequirements(path);
        loadedFrom = path;
    }
    return table;
}

QStringList requirementsBehind(const QList<Requirement> &table, const QString &document, Level level, const QStringList &codes)
{
    QStringList captions;
    for (const Requirement &r : table) {
        if (r.document != document)
            continue;
        for (const RequirementPlace &p : r.places) {
            // The entry stands behind it when it is at or below the place, or the place is below it.
            RequirementPlace entry;
            entry.level = level;
            entry.codes = codes;
            if (level != Level::Chapter && level != Level::Preamble)
                entry.codes[0].clear();
            if (p.covers(level, codes) || entry.covers(p.level, p.codes)) {
                captions << (r.law.isEmpty() ? r.caption : r.law + u' ' + r.caption);
                break;
            }
        }
    }
    return captions;
}

QString wordBound(const QList<Requirement> &table, const QString &document, const QString &word)
{
    QStringList bounds;
    for (const Requirement &r : table) {
        if (r.kind == RequirementKind::Bound && r.document == document && r.word == word)
            bounds << r.boundText + u'（' + r.law + u'）';
    }
    return bounds.join(u'、');
}

} // namespace normaris::legal
