#include "OfficeRender.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QUrl>
#include <QXmlStreamReader>

namespace normaris::test {

namespace {

// Runs a tool to its end; its standard output, or an empty result and *error.
QByteArray run(const QString &tool, const QStringList &args, int timeoutMs, QString *error)
{
    const QString program = QStandardPaths::findExecutable(tool);
    if (program.isEmpty()) {
        *error = tool + QStringLiteral(" is not installed (scripts/install-deps.sh installs it)");
        return {};
    }
    QProcess process;
    process.start(program, args);
    if (!process.waitForFinished(timeoutMs)) {
        process.kill();
        process.waitForFinished();
        *error = tool + QStringLiteral(" did not finish: ") + process.errorString();
        return {};
    }
    if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0) {
        *error = tool + QStringLiteral(" failed: ") + QString::fromLocal8Bit(process.readAllStandardError());
        return {};
    }
    return process.readAllStandardOutput();
}

} // namespace

QString convertToPdf(const QString &file, const QString &workDir, QString *error)
{
    // A profile in the work folder: no clash with a running office or another
    // test, and nothing left behind in the home folder.
    const QString profile = QUrl::fromLocalFile(workDir + QStringLiteral("/office-profile")).toString();
    const QString outDir = workDir + QStringLiteral("/pdf");
    QDir().mkpath(outDir);
    // The first start sets up the profile, which takes a while.
    run(QStringLiteral("soffice"),
        {QStringLiteral("-env:UserInstallation=") + profile, QStringLiteral("--headless"), QStringLiteral("--convert-to"),
         QStringLiteral("pdf"), QStringLiteral("--outdir"), outDir, file},
        240000, error);
    if (!error->isEmpty())
        return {};
    const QString pdf = outDir + u'/' + QFileInfo(file).completeBaseName() + QStringLiteral(".pdf");
    if (!QFileInfo::exists(pdf)) {
        *error = QStringLiteral("soffice wrote no PDF for ") + file;
        return {};
    }
    return pdf;
}

QString pdfText(const QString &pdf, QString *error)
{
    return QString::fromUtf8(
        run(QStringLiteral("pdftotext"), {QStringLiteral("-enc"), QStringLiteral("UTF-8"), pdf, QStringLiteral("-")}, 60000, error));
}

QList<PdfLine> pdfLines(const QString &pdf, QString *error)
{
    const QByteArray html = run(QStringLiteral("pdftotext"), {QStringLiteral("-bbox-layout"), pdf, QStringLiteral("-")}, 60000, error);
    QList<PdfLine> lines;
    if (!error->isEmpty())
        return lines;
    QXmlStreamReader reader(html);
    int page = 0;
    while (!reader.atEnd()) {
        reader.readNext();
        if (!reader.isStartElement())
            continue;
        if (reader.name() == u"page") {
            ++page;
        } else if (reader.name() == u"line") {
            lines.append({page, reader.attributes().value(QStringLiteral("xMin")).toDouble(),
                          reader.attributes().value(QStringLiteral("yMin")).toDouble(), QString()});
        } else if (reader.name() == u"word" && !lines.isEmpty()) {
            if (!lines.last().text.isEmpty())
                lines.last().text += u' ';
            lines.last().text += reader.readElementText();
        }
    }
    if (reader.hasError())
        *error = QStringLiteral("pdftotext -bbox-layout: ") + reader.errorString();
    return lines;
}

} // namespace normaris::test
