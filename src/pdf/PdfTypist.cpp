#include "pdf/PdfTypist.h"

#include "pdf/PageLayout.h"
#include "base/Failure.h"

#include <QDir>
#include <QPdfWriter>
#include <QSaveFile>

namespace normaris {

namespace {

// A4 with no margins of the device's own: the layout places everything itself.
void setUpPage(QPagedPaintDevice &device)
{
    device.setPageLayout(QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Portrait, QMarginsF(0, 0, 0, 0)));
}

} // namespace

int PdfTypist::paint(QPagedPaintDevice &device) const
{
    setUpPage(device);
    QPainter painter;
    if (!painter.begin(&device))
        throw Failure(QStringLiteral("印刷先を開けません。"));
    try {
        const int pages = pdf::paintDocument(painter, paragraphs(), [&] { return device.newPage(); });
        painter.end();
        return pages;
    } catch (...) {
        painter.end();
        throw;
    }
}

int PdfTypist::save(const QString &path, const QString &title) const
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
        pages = paint(writer);
    }
    if (!file.commit())
        throw Failure(QStringLiteral("ファイル「%1」に書き込めませんでした。").arg(shown));
    return pages;
}

} // namespace normaris
