#pragma once
// The PDF of a finished document, typed with its .docx and written after it.

#include "export/DocumentExport.h"
#include "pdf/PdfTypist.h"

namespace normaris {

class PdfOutput : public ExtraOutput {
public:
    explicit PdfOutput(QString path, QString title = {}) : m_path(std::move(path)), m_title(std::move(title)) {}
    Typist &typist() override { return m_typist; }
    // Nothing is written without a path: the document is there to be printed.
    void save() override
    {
        if (!m_path.isEmpty())
            m_pages = m_typist.save(m_path, m_title);
    }

    const PdfTypist &pdf() const { return m_typist; }
    int pages() const { return m_pages; }

private:
    PdfTypist m_typist;
    QString m_path;
    QString m_title;
    int m_pages = 0;
};

} // namespace normaris
