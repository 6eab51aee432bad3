#include "pdf/PdfPages.h"

#include "base/Failure.h"

#include <QDir>
#include <QPdfWriter>
#include <QSaveFile>

namespace normaris::pdf {

int paintPages(QPagedPaintDevice &device, bool landscape, const PagePainter &paint)
{
    device.setPageLayout(
        QPageLayout(QPageSize(QPageSize::A4), landscape ? QPageLayout::Landscape : QPageLayout::Portrait, QMarginsF(0, 0, 0, 0)));
    QPainter painter;
    if (!painter.begin(&device))
        throw Failure(QStringLiteral("印刷先を開けません。"));
    try {
        const int pages = paint(painter, [&] { return device.newPage(); });
        painter.end();
        return pages;
    } catch (...) {
        painter.end();
        throw;
    }
}

int savePdf(const QString &path, const QString &title, bool landscape, const PagePainter &paint)
{
    const QString shown = QDir::toNativeSeparators(path);
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        throw Failure(QStringLiteral("ファイル「%1」に書き込めませんでした。").arg(shown));
    int pages = 0;
    {
        QPdfWriter writer(&file);
        // Fine enough that the layout's positions keep their fractions of a point.
        writer.setResolution(1200);
        writer.setCreator(QStringLiteral("Normaris"));
        writer.setTitle(title);
        pages = paintPages(writer, landscape, paint);
    }
    if (!file.commit())
        throw Failure(QStringLiteral("ファイル「%1」に書き込めませんでした。").arg(shown));
    return pages;
}

} // namespace normaris::pdf
