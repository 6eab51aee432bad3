#include "fileformats/ZipPackage.h"

#include "base/Failure.h"

#include <QDir>
#include <QSaveFile>
#include <QScopeGuard>

#include <zip.h>

namespace normaris {

namespace {

[[noreturn]] void fail(const QString &path, const QString &reason)
{
    throw Failure(QStringLiteral("文書ファイル「%1」を書き込めませんでした。\n%2").arg(QDir::toNativeSeparators(path), reason));
}

QString libzipReason(zip_error_t *error) { return QString::fromLocal8Bit(zip_error_strerror(error)); }

// The zip is built in memory: libzip's own file output would rename its
// temporary file over path itself, whereas QSaveFile keeps the rule of the whole
// program that a file is replaced in one step or not at all.
QByteArray zipInMemory(const QString &path, const QList<ZipEntry> &entries)
{
    zip_error_t error;
    zip_error_init(&error);
    zip_source_t *buffer = zip_source_buffer_create(nullptr, 0, 0, &error);
    if (!buffer)
        fail(path, libzipReason(&error));
    const auto release = qScopeGuard([&] {
        zip_source_free(buffer);
        zip_error_fini(&error);
    });

    zip_t *archive = zip_open_from_source(buffer, ZIP_TRUNCATE, &error);
    if (!archive)
        fail(path, libzipReason(&error));
    // The archive now owns the buffer and frees it when closed; one more
    // reference keeps it for reading the zip out afterwards.
    zip_source_keep(buffer);
    for (const ZipEntry &entry : entries) {
        // The data stays in entries until zip_close() has read it, so no copy is made.
        zip_source_t *data = zip_source_buffer(archive, entry.data.constData(), zip_uint64_t(entry.data.size()), 0);
        if (!data || zip_file_add(archive, entry.name.toUtf8().constData(), data, ZIP_FL_ENC_UTF_8) < 0) {
            if (data)
                zip_source_free(data);
            const QString reason = QString::fromLocal8Bit(zip_strerror(archive));
            zip_discard(archive);
            fail(path, reason);
        }
    }
    if (zip_close(archive) < 0) {
        const QString reason = QString::fromLocal8Bit(zip_strerror(archive));
        zip_discard(archive);
        fail(path, reason);
    }

    QByteArray out;
    if (zip_source_open(buffer) < 0)
        fail(path, libzipReason(zip_source_error(buffer)));
    zip_source_seek(buffer, 0, SEEK_END);
    out.resize(qsizetype(zip_source_tell(buffer)));
    zip_source_seek(buffer, 0, SEEK_SET);
    const zip_int64_t read = zip_source_read(buffer, out.data(), zip_uint64_t(out.size()));
    zip_source_close(buffer);
    if (read != out.size())
        fail(path, libzipReason(zip_source_error(buffer)));
    return out;
}

} // namespace

void writeZipFile(const QString &path, const QList<ZipEntry> &entries)
{
    const QByteArray zip = zipInMemory(path, entries);
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        fail(path, file.errorString());
    if (file.write(zip) != zip.size())
        fail(path, file.errorString());
    if (!file.commit())
        fail(path, file.errorString());
}

} // namespace normaris
