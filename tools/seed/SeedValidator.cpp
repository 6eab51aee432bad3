#include "seed/SeedValidator.h"

#include "base/FieldChecks.h"

#include <QHash>
#include <QRegularExpression>
#include <QSet>

namespace normaris::seed {

namespace {

bool isTextLevel(Level level) { return level != Level::Chapter && level != Level::Article; }

QString levelName(Level level) { return QString::fromUtf16(levelInfo(level).sourceName); }

// The place's codes below the document, 章 to イロハ: a level's own code is the one at its depth.
QString Place::*const kPlaceCodes[] = {&Place::sho, &Place::jo, &Place::kou, &Place::gou, &Place::maru, &Place::iroha};

// The clause's own code: the deepest code of its place (a 前文 is always '01').
QString ownCode(const Clause &c)
{
    const int depth = placeDepth(c.level);
    return depth > 0 ? c.place.*kPlaceCodes[depth - 1] : QStringLiteral("01");
}

bool inStandardRange(const QString &code, int width, int low, int high)
{
    if (code.size() != width)
        return false;
    bool ok = false;
    const int n = code.toInt(&ok);
    return ok && n >= low && n <= high;
}

QString clauseKey(const QString &style, Level level, const Place &p)
{
    return QStringList{style, QString::number(int(level)), p.kitei, p.sho, p.jo, p.kou, p.gou, p.maru, p.iroha}.join(u'|');
}

// The 結合 of segment i (from 0) of a clause with n segments.
QString segmentJoin(int i, int n) { return n == 1 ? QStringLiteral("0") : QString::number(i + 1); }

struct Marker {
    QChar kind;
    QString code;
};

const QRegularExpression &markerPattern()
{
    static const QRegularExpression p(QStringLiteral("([★☆◆])([0-9]{4})\\1"));
    return p;
}

QList<Marker> markersIn(const QString &text)
{
    QList<Marker> markers;
    auto it = markerPattern().globalMatch(text);
    while (it.hasNext()) {
        const auto m = it.next();
        markers << Marker{m.captured(1).at(0), m.captured(2)};
    }
    return markers;
}

// A calendar date written out (令和８年４月１日, ２０２６年４月１日, 同年１２月２８日). An agreement
// that fixes one in its text or in a word's default prints it whatever date the user gives the
// agreement; its dates come from the effective date (☆0030☆) or from a blank word instead.
const QRegularExpression &calendarDatePattern()
{
    static const QRegularExpression p(QStringLiteral(
        "(令和|平成|昭和)?[0-9０-９元]+年[0-9０-９]+月[0-9０-９]+日|同年[0-9０-９]+月[0-9０-９]+日|(令和|平成|昭和)[0-9０-９元]+年"));
    return p;
}

bool isAgreement(const Document &doc) { return doc.kind == u"2"; }

class Validator {
public:
    explicit Validator(const Dictionary &d) : m_dictionary(d) {}

    QList<SourceError> run()
    {
        QSet<QString> documentKeys;
        for (const Document &doc : m_dictionary.documents) {
            if (documentKeys.contains(doc.style + u'|' + doc.code))
                fail(doc, doc.line, QStringLiteral("規程%1の文章形式%2が重複しています").arg(doc.code, doc.style));
            documentKeys.insert(doc.style + u'|' + doc.code);
            if (!inStandardRange(doc.code, 2, 1, 69))
                fail(doc, doc.line, QStringLiteral("規程Code「%1」は01～69の2桁にしてください").arg(doc.code));
            indexClauses(doc);
        }
        for (const Document &doc : m_dictionary.documents)
            checkDocument(doc);
        checkStylesAgree();
        return m_errors;
    }

    QList<SourceError> runEntries(const Document &doc)
    {
        QHash<QString, int> seen;
        for (const Clause &c : doc.clauses) {
            checkUnique(doc, c, seen);
            if (isTextLevel(c.level) && !c.segments.isEmpty())
                checkMarkers(doc, c);
        }
        return m_errors;
    }

private:
    void fail(const Document &doc, int line, const QString &message) { m_errors << SourceError{doc.file, line, message}; }

    void indexClauses(const Document &doc)
    {
        for (const Clause &c : doc.clauses)
            m_clauses.insert(clauseKey(doc.style, c.level, c.place), &c);
    }

    // The composition walks clauses in code order: the source must list them so.
    void checkOrder(const Document &doc, const Clause &c, QHash<QString, QString> &lastCode)
    {
        const int depth = placeDepth(c.level);
        if (depth == 0)
            return;
        // The parent's codes key the run; a level numbered through the document has
        // the document alone as its parent.
        Place parent = c.place;
        const QString code = ownCode(c);
        for (int d = levelInfo(c.level).numberedThroughDocument ? 0 : depth - 1; d < depth; ++d)
            (parent.*kPlaceCodes[d]).clear();
        const QString key = QString::number(int(c.level)) + u'|' + parent.describe();
        const QString previous = lastCode.value(key);
        if (!previous.isEmpty() && code.toInt() <= previous.toInt())
            fail(doc, c.line,
                 QStringLiteral("%1のCode「%2」は前の「%3」より大きくしてください（Code順に並べます）")
                     .arg(levelName(c.level), code, previous));
        lastCode.insert(key, code);
    }

    // A place given twice: the second one is refused, naming the line of the first.
    void checkUnique(const Document &doc, const Clause &c, QHash<QString, int> &seen)
    {
        const QString key = clauseKey(doc.style, c.level, c.place);
        if (seen.contains(key))
            fail(doc, c.line,
                 QStringLiteral("%1「%2」が重複しています（%3行目と同じです）").arg(levelName(c.level), c.place.describe()).arg(seen[key]));
        else
            seen.insert(key, c.line);
    }

    void checkDocument(const Document &doc)
    {
        QHash<QString, QString> lastCode;
        QHash<QString, int> seen;
        int preambles = 0;
        for (const Clause &c : doc.clauses) {
            checkUnique(doc, c, seen);
            if (c.level == Level::Preamble && ++preambles > 1)
                fail(doc, c.line, QStringLiteral("前文は一つの規程に一つだけです"));
            checkCode(doc, c);
            checkOrder(doc, c, lastCode);
            if (isTextLevel(c.level)) {
                checkText(doc, c);
                checkTemplates(doc, c);
                if (isAgreement(doc))
                    checkNoFixedDates(doc, c);
            }
        }
    }

    // A template completes the clause that announces it: printed as a line of its own inside
    // that clause, it must not be a clause by itself, which would take a number never printed.
    void checkTemplates(const Document &doc, const Clause &c)
    {
        const bool printsTemplates = levelInfo(c.level).templateLine;
        for (qsizetype i = 0; i < c.segments.size(); ++i) {
            const Segment &s = c.segments[i];
            if (s.templateCode == u"0")
                continue;
            if (!printsTemplates)
                fail(doc, c.line, QStringLiteral("テンプレートは項か号に置いてください: %1").arg(c.place.describe()));
            else if (i == 0 || !s.lineBreak)
                fail(doc, c.line,
                     QStringLiteral("テンプレート%1は条項の続き（「=↵」の区切り）に置いてください。それだけで一つの条項にはできません: %2")
                         .arg(s.templateCode, c.place.describe()));
        }
    }

    void checkNoFixedDates(const Document &doc, const Clause &c)
    {
        for (const Segment &s : c.segments) {
            const auto m = calendarDatePattern().match(s.text);
            if (m.hasMatch())
                fail(doc, c.line,
                     QStringLiteral("協定の本文に日付「%1」があります。☆0030☆（有効期間起算日）か埋込語句にしてください")
                         .arg(m.captured(0)));
        }
        for (const Word &w : c.words) {
            const auto m = calendarDatePattern().match(w.word);
            if (m.hasMatch())
                fail(doc, w.line,
                     QStringLiteral("語句 %1 の既定の語句が日付「%2」です。「令和　年　月　日」のように空けてください")
                         .arg(w.code, m.captured(0)));
        }
    }

    void checkCode(const Document &doc, const Clause &c)
    {
        const LevelInfo &info = levelInfo(c.level);
        if (info.placeDepth == 0)
            return;
        const QString code = ownCode(c);
        // The standard codes run from 1 to just below the user's own.
        const int last = info.firstUserCode - 1;
        const bool good =
            c.level == Level::Chapter && code == u"00" ? c.title == kChapterlessBody : inStandardRange(code, info.codeWidth, 1, last);
        if (!good)
            fail(doc, c.line,
                 QStringLiteral("%1のCode「%2」は%3～%4の%5桁にしてください")
                     .arg(levelName(c.level), code, QStringLiteral("%1").arg(1, info.codeWidth, 10, QChar(u'0')), QString::number(last))
                     .arg(info.codeWidth));
    }

    void checkText(const Document &doc, const Clause &c)
    {
        if (c.segments.isEmpty())
            fail(doc, c.line, QStringLiteral("%1「%2」に本文（「=」の行）がありません").arg(levelName(c.level), c.place.describe()));
        for (const Segment &s : c.segments) {
            const int bytes = CP932Length(s.text);
            if (bytes > kSegmentLimit)
                fail(doc, c.line,
                     QStringLiteral("文章が%1バイトあり、制限(%2)を越えています: %3").arg(bytes).arg(kSegmentLimit).arg(s.text.left(20)));
            if (s.text.contains(u'\'') || s.text.contains(u'"'))
                fail(doc, c.line, QStringLiteral("文章に引用符（' \"）は使えません: %1").arg(s.text.left(20)));
        }
        checkMarkers(doc, c);
        for (const Reference &r : c.references)
            checkTarget(doc, r);
    }

    // Every marker of the text has its 語句 or 参照 line and every such line its marker.
    void checkMarkers(const Document &doc, const Clause &c)
    {
        QHash<QString, int> wordMarkers, referenceMarkers;
        for (const Segment &s : c.segments) {
            const QList<Marker> markers = markersIn(s.text);
            int markerChars = 0;
            for (const Marker &m : markers) {
                markerChars += 2;
                if (m.kind == u'★')
                    ++wordMarkers[m.code];
                else if (m.kind == u'◆')
                    ++referenceMarkers[m.code];
                else if (!isBasicWord(m.code))
                    fail(doc, c.line, QStringLiteral("☆%1☆は基本設定にありません（0001～0016、0030）").arg(m.code));
            }
            const int looseChars = s.text.count(u'★') + s.text.count(u'☆') + s.text.count(u'◆');
            if (looseChars != markerChars)
                fail(doc, c.line,
                     QStringLiteral("記号（★☆◆）は「★0001★」のように4桁の数字を挟んで使ってください: %1").arg(s.text.left(20)));
        }
        checkMarkerRows(doc, c, wordMarkers, c.words, u'★', QStringLiteral("語句"));
        checkMarkerRows(doc, c, referenceMarkers, c.references, u'◆', QStringLiteral("参照"));
    }

    static bool isBasicWord(const QString &code)
    {
        const int n = code.toInt();
        return (n >= 1 && n <= 16) || n == 30;
    }

    template<typename Row>
    void checkMarkerRows(const Document &doc, const Clause &c, const QHash<QString, int> &markers, const QList<Row> &rows, QChar sign,
                         const QString &rowName)
    {
        QSet<QString> defined;
        for (const Row &row : rows) {
            if (defined.contains(row.code))
                fail(doc, row.line, QStringLiteral("%1 %2 が重複しています").arg(rowName, row.code));
            defined.insert(row.code);
            if (!markers.contains(row.code))
                fail(doc, row.line, QStringLiteral("%1 %2 の記号%3%2%3が本文にありません").arg(rowName, row.code, sign));
        }
        for (auto it = markers.begin(); it != markers.end(); ++it) {
            if (!defined.contains(it.key()))
                fail(doc, c.line, QStringLiteral("%1%2%1に%3の行がありません").arg(sign, it.key(), rowName));
        }
    }

    void checkTarget(const Document &doc, const Reference &r)
    {
        if (r.targetLevel == Level::Document) {
            if (!documentExists(doc.style, r.target.kitei))
                fail(doc, r.line, QStringLiteral("参照 %1 の参照先の規程%2がありません").arg(r.code, r.target.kitei));
            return;
        }
        const Clause *target = m_clauses.value(clauseKey(doc.style, r.targetLevel, r.target));
        if (!target) {
            fail(doc, r.line, QStringLiteral("参照 %1 の参照先「%2」がありません").arg(r.code, r.target.describe()));
            return;
        }
        if (!r.targetSegment.isEmpty()) {
            const int n = r.targetSegment.toInt();
            if (target->segments.size() < 2 || n < 1 || n > target->segments.size())
                fail(doc, r.line, QStringLiteral("参照 %1 の参照先に結合%2がありません").arg(r.code, r.targetSegment));
        }
    }

    bool documentExists(const QString &style, const QString &code) const
    {
        for (const Document &d : m_dictionary.documents) {
            if (d.style == style && d.code == code)
                return true;
        }
        return false;
    }

    // What both styles of a document must share: levels, places, and the codes of
    // words and references at each 結合, since those rows carry no prose style.
    static QStringList structureOf(const Document &doc)
    {
        QStringList lines = {QStringLiteral("文章種別 ") + doc.kind};
        for (const Clause &c : doc.clauses) {
            QStringList codes;
            for (int i = 0; i < c.segments.size(); ++i) {
                for (const Marker &m : markersIn(c.segments[i].text)) {
                    if (m.kind != u'☆')
                        codes << m.kind + m.code + u'@' + segmentJoin(i, c.segments.size());
                }
            }
            for (int i = 0; i < c.segments.size(); ++i) {
                if (c.segments[i].templateCode != u"0")
                    codes << QStringLiteral("テンプレート") + c.segments[i].templateCode + u'@' + segmentJoin(i, c.segments.size());
            }
            for (const Word &w : c.words)
                codes << QStringLiteral("語句") + w.code + u'=' + w.caption + u'/' + w.word;
            for (const Reference &r : c.references)
                codes << QStringLiteral("参照") + r.code + u'→' + r.target.describe() + u'#' + r.targetSegment;
            codes.sort();
            lines << levelName(c.level) + u' ' + c.place.describe() + u' ' + codes.join(u',');
        }
        return lines;
    }

    void checkStylesAgree()
    {
        QHash<QString, const Document *> byStyle[3];
        for (const Document &doc : m_dictionary.documents)
            byStyle[doc.style.toInt() == 2 ? 2 : 1].insert(doc.code, &doc);
        for (int style : {1, 2}) {
            const int other = 3 - style;
            for (const Document *doc : std::as_const(byStyle[style])) {
                if (!byStyle[other].contains(doc->code))
                    fail(*doc, doc->line, QStringLiteral("規程%1に文章形式%2のファイルがありません").arg(doc->code).arg(other));
            }
        }
        for (const Document *first : std::as_const(byStyle[1])) {
            const Document *second = byStyle[2].value(first->code);
            if (!second)
                continue;
            const QStringList a = structureOf(*first), b = structureOf(*second);
            for (qsizetype i = 0; i < std::max(a.size(), b.size()); ++i) {
                if (a.value(i) == b.value(i))
                    continue;
                const int line = i == 0 ? second->line : (i - 1 < second->clauses.size() ? second->clauses[i - 1].line : 0);
                fail(*second, line,
                     QStringLiteral("である調（%1）と構成が違います: 「%2」と「%3」").arg(first->file, a.value(i), b.value(i)));
                break;
            }
        }
    }

    const Dictionary &m_dictionary;
    QHash<QString, const Clause *> m_clauses;
    QList<SourceError> m_errors;
};

} // namespace

void resolveReferences(Dictionary &dictionary, QList<SourceError> &errors)
{
    for (Document &doc : dictionary.documents) {
        for (Clause &c : doc.clauses) {
            for (Reference &r : c.references) {
                if (!r.target.sho.isEmpty() || r.target.jo.isEmpty())
                    continue;
                QStringList chapters;
                for (const Document &target : std::as_const(dictionary.documents)) {
                    if (target.style != doc.style || target.code != r.target.kitei)
                        continue;
                    for (const Clause &t : target.clauses) {
                        if (t.level == Level::Article && t.place.jo == r.target.jo && !chapters.contains(t.place.sho))
                            chapters << t.place.sho;
                    }
                }
                if (chapters.size() == 1)
                    r.target.sho = chapters.first();
                else if (chapters.size() > 1)
                    errors << SourceError{
                        doc.file, r.line,
                        QStringLiteral("参照 %1 の条%2は複数の章にあります。章を書いてください").arg(r.code, r.target.jo)};
            }
        }
    }
}

QList<SourceError> validate(const Dictionary &dictionary) { return Validator(dictionary).run(); }

QList<SourceError> checkEntries(const Document &document) { return Validator(Dictionary()).runEntries(document); }

} // namespace normaris::seed
