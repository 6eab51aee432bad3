#pragma once
// The version kept of a finished document, as one of its outputs: what its body
// printed, recorded while it is typed and kept when the document is complete, in the
// transaction of the files that print it. The same as the last one of the document,
// it is not kept again.

#include "document/DocumentOutput.h"
#include "versions/VersionRecorder.h"

#include <QSqlDatabase>

namespace normaris {

class VersionOutput : public DocumentOutput {
public:
    VersionOutput(QSqlDatabase db, QString style, QString document)
        : m_db(std::move(db)), m_style(std::move(style)), m_document(std::move(document))
    {
    }
    Typist &typist() override { return m_recorder; }
    bool complete(StagedFiles &files) override;

    const PrintedRows &rows() const { return m_recorder.rows(); }

private:
    QSqlDatabase m_db;
    QString m_style, m_document;
    VersionRecorder m_recorder;
};

} // namespace normaris
