#pragma once
// The fixed wordings of a finished document that more than one part of it types,
// and the colour rule of a row.

#include "rulebase/CompositionRow.h"
#include "document/Typist.h"

namespace normaris {

// Blue while a marker (★ word, ◆ reference, ☆ setting) is left in the text: the
// user must still deal with it. Black otherwise.
Typist::Color markColor(const QString &text);
// The same for the words alone (★): the preview of an article is there to check them.
Typist::Color wordMarkColor(const QString &text);

// The red line that stands where the user must insert a template by hand:
// alignment left, red, the line, black again.
void typeTemplateLine(Typist &typist, const QString &templateCode);

// A chapter with code 00 is the part of a document that has no chapter: it prints
// no heading and takes no paragraph.
inline bool isChapterless(const CompositionRow &row) { return row.level == Level::Chapter && row.codes[0] == u"00"; }

// 第１章  総則
QString chapterHeading(const CompositionRow &row);
// 第１条（目的）
QString articleHeading(const CompositionRow &row);

} // namespace normaris
