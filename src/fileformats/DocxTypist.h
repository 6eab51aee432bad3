#pragma once
// A Typist that builds a WordprocessingML document in memory and saves it as a
// .docx that a word processor opens as it would its own file: the paragraphs in
// the styles the renderer names, headings with their outline levels, the table of
// contents as a field the word processor can update, page numbers in the footer.

#include "document/RecordingTypist.h"

namespace normaris {

class DocxTypist : public RecordingTypist {
public:
    // Writes what was typed so far as a .docx at path, replacing a file there
    // only once the new one is complete. The typist stays usable: typing may go
    // on and be saved again. Throws Failure.
    void save(const QString &path) const;
};

} // namespace normaris
