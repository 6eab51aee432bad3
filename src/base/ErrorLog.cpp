#include "base/ErrorLog.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace normaris {

namespace {

constexpr qint64 kRotateBytes = 1024 * 1024;
constexpr int kKeptFiles = 3;

struct LogState {
    QString folder;
    QString command;
};

LogState &state()
{
    static LogState s;
    return s;
}

void rotate(const QString &file)
{
    if (QFileInfo(file).size() < kRotateBytes)
        return;
    QFile::remove(file + QStringLiteral(".%1").arg(kKeptFiles));
    for (int i = kKeptFiles - 1; i >= 1; --i)
        QFile::rename(file + QStringLiteral(".%1").arg(i), file + QStringLiteral(".%1").arg(i + 1));
    QFile::rename(file, file + QStringLiteral(".1"));
}

} // namespace

void ErrorLog::setFolder(const QString &appPath) { state().folder = appPath; }

void ErrorLog::setCommand(const QString &command) { state().command = command; }

QString ErrorLog::fileOf(const QString &appPath) { return appPath + QStringLiteral("/log/normaris.log"); }

void ErrorLog::write(const QString &detail)
{
    if (state().folder.isEmpty())
        return;
    const QString path = fileOf(state().folder);
    if (!QDir().mkpath(QFileInfo(path).absolutePath()))
        return;
    rotate(path);
    QFile file(path);
    if (!file.open(QIODevice::Append | QIODevice::Text))
        return;
    QString line = QDateTime::currentDateTimeUtc().toString(Qt::ISODate) + u'\t' + state().command + u'\t' + detail;
    line.replace(u'\n', QStringLiteral(" | "));
    file.write(line.toUtf8() + '\n');
}

} // namespace normaris
