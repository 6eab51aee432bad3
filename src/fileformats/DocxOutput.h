#pragma once
// The .docx of a finished document, as one of its outputs.

#include "document/DocumentOutput.h"
#include "fileformats/DocxTypist.h"

namespace normaris {

class DocxOutput : public DocumentOutput {
public:
    explicit DocxOutput(QString path) : m_path(std::move(path)) {}
    Typist &typist() override { return m_typist; }
    bool complete(StagedFiles &files) override
    {
        m_typist.save(files.stage(m_path));
        return true;
    }

private:
    DocxTypist m_typist;
    QString m_path;
};

} // namespace normaris
