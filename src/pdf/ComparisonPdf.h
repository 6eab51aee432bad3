#pragma once
// The 新旧対照表 as a PDF, laid out by the program itself from the blocks of its
// .docx: the same lying A4 page, the header row on every page the table runs over,
// the changed characters underlined and the page number at the foot.
//
// It needs a QGuiApplication: the fonts come from the platform.

#include "versions/ComparisonExport.h"

#include <QString>

class QPagedPaintDevice;

namespace normaris {

class ComparisonPdf : public ComparisonOutput {
public:
    explicit ComparisonPdf(QString path) : m_path(std::move(path)) {}
    void save(StagedFiles &files, const ComparisonTable &table, const QList<model::Block> &blocks, const model::PageSetup &setup) override;
    int pages() const { return m_pages; }

    // The same pages onto a printer or another paged device. Throws Failure.
    static int paint(QPagedPaintDevice &device, const QList<model::Block> &blocks, const model::PageSetup &setup);

private:
    QString m_path;
    int m_pages = 0;
};

} // namespace normaris
