#include "export/ClauseWriter.h"

#include "export/DocumentTexts.h"
#include "export/Numerals.h"

namespace normaris {

namespace {

// How the segments after the head of a chain are coloured.
enum class SegmentColour {
    OwnThenBlack, // each by its own marks, black again after it
    OwnKept,      // each by its own marks, the colour left as it is
    Head,         // none set: the segments keep the colour of the head
};

// The output tables leave 結合 empty for a clause of one row; '0', as the
// composition tables have it, says the same.
bool isSingleRow(const CompositionRow &row) { return row.join.isEmpty() || row.join == u"0"; }

using LabelOf = QString (*)(const CompositionRow &head, bool showFirstParagraphNumber);
using ColourOf = Typist::Color (*)(const QString &text);

QString zenbunLabel(const CompositionRow &, bool) { return QStringLiteral("  "); }

// Numbers below 10 in full width, from 10 in half width (two full-width digits
// would not fit the hanging indent). "表示しない" hides the number of a first 項;
// from 10 on, the first 項 is known by its code '01' instead.
QString kouLabel(const CompositionRow &head, bool showFirstParagraphNumber)
{
    const bool small = head.number < 10;
    const bool isFirst = small ? head.number == 1 : head.codes[2] == u"01";
    if (!showFirstParagraphNumber && isFirst)
        return QStringLiteral("    ");
    return (small ? fullWidthDigits(head.number) : QString::number(head.number)) + QStringLiteral("  ");
}

// A single-row 号 from (10) on gives up its leading blank, so that the wider
// number keeps the text in line.
QString gouLabel(const CompositionRow &head, bool)
{
    const QString lead = isSingleRow(head) && head.number >= 10 ? QString() : QStringLiteral(" ");
    return lead + u'(' + QString::number(head.number) + u')' + QStringLiteral("  ");
}

QString maruLabel(const CompositionRow &head, bool) { return QStringLiteral("    ") + maruCharacter(head.number) + QStringLiteral("  "); }
QString irohaLabel(const CompositionRow &head, bool)
{
    return QStringLiteral("      ") + irohaCharacter(head.number) + QStringLiteral("  ");
}

// The preview numbers nothing: ● stands where the number will be.
QString previewKouLabel(const CompositionRow &, bool) { return QStringLiteral("●  "); }
QString previewGouLabel(const CompositionRow &, bool) { return QStringLiteral("(●)  "); }
QString previewMaruLabel(const CompositionRow &, bool) { return QStringLiteral("    ●  "); }
QString previewIrohaLabel(const CompositionRow &, bool) { return QStringLiteral("      ●  "); }

} // namespace

struct ClauseForm {
    int indent;           // first-line indent in characters; negative hangs
    LabelOf label;        // before the first line of the clause
    QString continuation; // blank prefix of a segment that starts a new line
    bool templates;       // a segment with 改行 and テンプレート is the template line
    ColourOf marks;       // the colour of a segment by its text
    SegmentColour colour;
    bool breakBeforeLoneLine; // a single row with 改行 first ends the paragraph
};

namespace {

// The finished document. Every marker left in a segment (★ word, ◆ reference,
// ☆ setting) shows in blue.
// Columns: indent, label, continued line, templates, marks, segment colour, break before a lone line.
const ClauseForm kZenbun{0, zenbunLabel, QStringLiteral("  "), false, markColor, SegmentColour::OwnKept, true};
const ClauseForm kDocumentLevels[] = {
    /* 項 */ {-1, kouLabel, QStringLiteral("    "), true, markColor, SegmentColour::OwnThenBlack, false},
    /* 号 */ {-2, gouLabel, QStringLiteral("      "), true, markColor, SegmentColour::OwnThenBlack, false},
    /* ① */ {-3, maruLabel, QStringLiteral("        "), false, markColor, SegmentColour::Head, false},
    /* イ */ {-4, irohaLabel, QStringLiteral("          "), false, markColor, SegmentColour::Head, false},
};

// The preview of an article, made to check its words: only their ★ markers show
// in blue, on every segment, and a template segment is typed as it stands.
// Columns as above.
const ClauseForm kPreviewLevels[] = {
    /* 項 */ {-1, previewKouLabel, QStringLiteral("    "), false, wordMarkColor, SegmentColour::OwnKept, false},
    /* 号 */ {-2, previewGouLabel, QStringLiteral("      "), false, wordMarkColor, SegmentColour::OwnKept, false},
    /* ① */ {-3, previewMaruLabel, QStringLiteral("        "), false, wordMarkColor, SegmentColour::OwnKept, false},
    /* イ */ {-4, previewIrohaLabel, QStringLiteral("          "), false, wordMarkColor, SegmentColour::OwnKept, false},
};

bool isTemplateSegment(const ClauseForm &form, const CompositionRow &row)
{
    return form.templates && row.lineBreak && !row.templateCode.isEmpty();
}

} // namespace

ClauseWriter::ClauseWriter(Typist &typist, RowCursor &cursor, bool showFirstParagraphNumber)
    : ClauseWriter(typist, cursor, showFirstParagraphNumber, kDocumentLevels)
{
}

ClauseWriter::ClauseWriter(Typist &typist, RowCursor &cursor, bool showFirstParagraphNumber, const ClauseForm *levels)
    : m_typist(typist), m_cursor(cursor), m_showFirstParagraphNumber(showFirstParagraphNumber), m_levels(levels)
{
}

ClauseWriter ClauseWriter::preview(Typist &typist, RowCursor &cursor) { return ClauseWriter(typist, cursor, true, kPreviewLevels); }

void ClauseWriter::type(Level level) { typeClause(isClauseLevel(level) ? m_levels[clauseDepth(level)] : kZenbun); }

// The head takes the colour that the body loop set for its row.
void ClauseWriter::typeClause(const ClauseForm &form)
{
    m_typist.setAlignment(Typist::Alignment::Left);
    m_typist.setCharacterUnitFirstLineIndent(form.indent);
    const CompositionRow &head = m_cursor.row();

    if (isSingleRow(head)) {
        if (isTemplateSegment(form, head)) {
            typeTemplateLine(m_typist, head.templateCode);
        } else if (head.lineBreak) {
            if (form.breakBeforeLoneLine)
                m_typist.typeParagraph();
            m_typist.typeText(form.continuation + head.text);
        } else {
            m_typist.typeText(form.label(head, m_showFirstParagraphNumber) + head.text);
        }
        return;
    }
    // A segment after '1' whose head is missing is dropped: the chain cannot be read.
    if (head.join != u"1")
        return;

    m_typist.typeText(form.label(head, m_showFirstParagraphNumber) + head.text);
    for (int counter = 2; m_cursor.next() && m_cursor.next()->join == QString::number(counter); ++counter) {
        m_cursor.advance();
        typeSegment(form, m_cursor.row());
    }
}

void ClauseWriter::typeSegment(const ClauseForm &form, const CompositionRow &segment)
{
    if (isTemplateSegment(form, segment)) {
        m_typist.typeParagraph();
        typeTemplateLine(m_typist, segment.templateCode);
        return;
    }
    if (form.colour != SegmentColour::Head)
        m_typist.setColor(form.marks(segment.text));
    if (segment.lineBreak) {
        m_typist.typeParagraph();
        m_typist.typeText(form.continuation + segment.text);
    } else {
        m_typist.typeText(segment.text);
    }
    if (form.colour == SegmentColour::OwnThenBlack)
        m_typist.setColor(Typist::Color::Black);
}

} // namespace normaris
