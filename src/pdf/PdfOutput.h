#pragma once
// The PDF of a finished document, as one of its outputs: laid out by the program and
// written when the document is complete, to a path given at once or asked for then.

#include "document/DocumentOutput.h"
#include "pdf/PdfTypist.h"

#include <QFileInfo>
#include <functional>

namespace normaris {

class PdfOutput : public DocumentOutput {
public:
    // A PDF written to path, under the title given (none: the reader shows the file's name).
    explicit PdfOutput(QString path, QString title = {}) : m_path(std::move(path)), m_title(std::move(title)) {}
    // A PDF whose path is asked for once the document is complete and its checks have
    // passed; no path is a save declined. Its title is the file's name.
    explicit PdfOutput(std::function<QString()> choosePath) : m_choosePath(std::move(choosePath)) {}

    Typist &typist() override { return m_typist; }
    bool complete(StagedFiles &files) override
    {
        if (m_choosePath) {
            m_path = m_choosePath();
            if (m_path.isEmpty())
                return false;
            m_title = QFileInfo(m_path).completeBaseName();
        }
        m_pages = m_typist.save(files.stage(m_path), m_title);
        return true;
    }

    const PdfTypist &pdf() const { return m_typist; }
    const QString &path() const { return m_path; }
    int pages() const { return m_pages; }

private:
    PdfTypist m_typist;
    QString m_path;
    QString m_title;
    std::function<QString()> m_choosePath;
    int m_pages = 0;
};

} // namespace normaris
