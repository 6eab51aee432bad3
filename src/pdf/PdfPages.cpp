#include "pdf/PdfPages.h"

#include "base/Failure.h"

#include <QBuffer>
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

int savePdf(const QString &path, const QString &title, bool landscape, const PagePainter &paint, const QList<OutlineEntry> *outline)
{
    const QString shown = QDir::toNativeSeparators(path);
    // Written in memory first: the bookmarks are added to the finished file.
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    int pages = 0;
    {
        QPdfWriter writer(&buffer);
        // Fine enough that the layout's positions keep their fractions of a point.
        writer.setResolution(1200);
        writer.setCreator(QStringLiteral("Normaris"));
        writer.setTitle(title);
        pages = paintPages(writer, landscape, paint);
    }
    const double pageHeight = landscape ? 595.28 : 841.89;
    const QByteArray bytes = outline ? withOutline(buffer.data(), *outline, pageHeight) : buffer.data();
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        throw Failure(QStringLiteral("ファイル「%1」に書き込めませんでした。").arg(shown));
    if (!file.commit())
        throw Failure(QStringLiteral("ファイル「%1」に書き込めませんでした。").arg(shown));
    return pages;
}

} // namespace normaris::pdf
