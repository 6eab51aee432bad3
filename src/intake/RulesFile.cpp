#include "intake/RulesFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QStringDecoder>
#include <QTemporaryDir>
#include <QUrl>

namespace normaris::intake {

namespace {

QString fileName(const QString &path) { return QFileInfo(path).fileName(); }

RulesFileResult refused(const QString &message) { return RulesFileResult{std::nullopt, message}; }

// The suffixes the office suite turns into .docx first.
bool convertedSuffix(const QString &suffix) { return suffix == u"doc" || suffix == u"odt" || suffix == u"rtf"; }

// Decodes the bytes whole in the encoding, or nothing when any byte does not fit it.
std::optional<QString> decodedAs(const char *encoding, const QByteArray &bytes)
{
    QStringDecoder decoder(encoding, QStringDecoder::Flag::Stateless);
    if (!decoder.isValid())
        return std::nullopt;
    QString text = decoder.decode(bytes);
    if (decoder.hasError())
        return std::nullopt;
    return text;
}

} // namespace

bool needsConversion(const QString &path) { return convertedSuffix(QFileInfo(path).suffix().toLower()); }

RulesFileResult readTextBytes(const QString &path, const QByteArray &bytes)
{
    QByteArray body = bytes;
    if (body.startsWith("\xEF\xBB\xBF"))
        body.remove(0, 3);
    // Valid UTF-8 is rarely valid CP932 as well and never the other way round in
    // Japanese prose: UTF-8 is tried first.
    std::optional<QString> text = decodedAs("UTF-8", body);
    if (!text)
        text = decodedAs("CP932", body);
    if (!text || text->contains(QChar(0)))
        return refused(
            QStringLiteral(
                "ファイル「%1」の文字コードが判別できません。UTF-8 または Shift_JIS（CP932）で保存したテキストを指定してください。")
                .arg(fileName(path)));
    RulesLines lines;
    text->replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    text->replace(u'\r', u'\n');
    for (const QString &line : text->split(u'\n'))
        lines.lines << RulesLine{line, false};
    return RulesFileResult{lines, QString()};
}

RulesFileResult readConverted(const QString &path)
{
    const QString office = QStandardPaths::findExecutable(QStringLiteral("soffice"));
    if (office.isEmpty())
        return refused(QStringLiteral("ファイル「%1」を読むには LibreOffice が必要です。LibreOffice を入れるか、Word で .docx "
                                      "として保存したファイルを指定してください。")
                           .arg(fileName(path)));
    QTemporaryDir work;
    if (!work.isValid())
        return refused(QStringLiteral("ファイル「%1」を変換する作業フォルダを作れません。").arg(fileName(path)));
    // The suite gets a profile of its own, so that it neither waits for nor disturbs a
    // running office of the user's.
    const QString profile = QUrl::fromLocalFile(work.filePath(QStringLiteral("profile"))).toString();
    const QString input = work.filePath(QStringLiteral("input.") + QFileInfo(path).suffix().toLower());
    if (!QFile::copy(path, input))
        return refused(QStringLiteral("ファイル「%1」を読めません。").arg(fileName(path)));
    QProcess office_;
    office_.setProgram(office);
    office_.setArguments({QStringLiteral("-env:UserInstallation=") + profile, QStringLiteral("--headless"), QStringLiteral("--norestore"),
                          QStringLiteral("--convert-to"), QStringLiteral("docx"), QStringLiteral("--outdir"), work.path(), input});
    office_.setProcessChannelMode(QProcess::MergedChannels);
    office_.start();
    if (!office_.waitForStarted())
        return refused(QStringLiteral("ファイル「%1」を変換する LibreOffice を起動できません。").arg(fileName(path)));
    if (!office_.waitForFinished(kConversionTimeLimit)) {
        office_.kill();
        office_.waitForFinished();
        return refused(QStringLiteral("ファイル「%1」の変換が時間内に終わりませんでした。").arg(fileName(path)));
    }
    const QString output = work.filePath(QStringLiteral("input.docx"));
    if (!QFileInfo::exists(output))
        return refused(QStringLiteral("ファイル「%1」を変換できませんでした。壊れているか、別の形式のファイルです。").arg(fileName(path)));
    RulesFileResult result = readDocx(output);
    if (!result.lines)
        return refused(QStringLiteral("ファイル「%1」を変換したものが読めません。").arg(fileName(path)));
    return result;
}

RulesFileResult readRulesFile(const QString &path)
{
    const QString suffix = QFileInfo(path).suffix().toLower();
    if (!QFileInfo(path).isFile())
        return refused(QStringLiteral("ファイル「%1」がありません。").arg(path));
    if (suffix == u"txt") {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            return refused(QStringLiteral("ファイル「%1」を読めません。").arg(fileName(path)));
        return readTextBytes(path, file.readAll());
    }
    if (suffix == u"docx")
        return readDocx(path);
    if (suffix == u"pdf")
        return readPdf(path);
    if (convertedSuffix(suffix))
        return readConverted(path);
    return refused(QStringLiteral("ファイル「%1」は取り込めない形式です。.docx .doc .odt .rtf .pdf .txt のいずれかを指定してください。")
                       .arg(fileName(path)));
}

} // namespace normaris::intake
