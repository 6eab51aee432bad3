#pragma once
// The text record of a finished document (TextTypist's lines), as one of its outputs.

#include "document/DocumentOutput.h"
#include "fileformats/TextTypist.h"

namespace normaris {

class TextOutput : public DocumentOutput {
public:
    explicit TextOutput(QString path) : m_path(std::move(path)) {}
    Typist &typist() override { return m_typist; }
    bool complete(StagedFiles &files) override
    {
        writeTextFile(files.stage(m_path), m_typist.text());
        return true;
    }
    QString text() const { return m_typist.text(); }

private:
    TextTypist m_typist;
    QString m_path;
};

} // namespace normaris
