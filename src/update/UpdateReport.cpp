#include "update/UpdateReport.h"

#include "base/Failure.h"
#include "fileformats/XlsxSheet.h"

#include <QSaveFile>

namespace normaris {

namespace {

QString styleCaption(const QString &style) { return style == u"2" ? QStringLiteral("ですます調") : QStringLiteral("である調"); }

QString where(const UpdateEntry &e)
{
    QString s = e.place;
    if (!e.documentName.isEmpty())
        s += QStringLiteral("　") + e.documentName;
    if (!e.article.isEmpty())
        s += QStringLiteral("　") + e.article;
    return s;
}

QStringList indented(const QString &caption, const QString &text)
{
    QStringList lines = {QStringLiteral("　　") + caption};
    const QStringList parts = text.isEmpty() ? QStringList{QStringLiteral("（なし）")} : text.split(u'\n');
    for (const QString &line : parts)
        lines << QStringLiteral("　　　") + line;
    return lines;
}

} // namespace

QString updateReportText(const UpdateResult &result)
{
    QStringList lines = {QStringLiteral("ディクショナリ更新　") + result.summary()};
    for (const UpdateEntry &e : result.entries) {
        QString line = QStringLiteral("［%1］%2").arg(updateKindCaption(e.kind), where(e));
        if (!e.note.isEmpty())
            line += QStringLiteral("（%1）").arg(e.note);
        lines << line;
        if (e.kind == UpdateKind::Conflict) {
            lines << indented(QStringLiteral("出荷時の文章:"), e.shipped);
            lines << indented(QStringLiteral("会社の文章:"), e.company);
            lines << indented(QStringLiteral("新しい文章:"), e.offered);
        } else if (e.kind == UpdateKind::Proposed && !e.requirement.isEmpty()) {
            lines << QStringLiteral("　　根拠: ") + e.requirement;
        }
    }
    lines << updateComparisonLines(result);
    return lines.join(u'\n') + u'\n';
}

QStringList updateComparisonLines(const UpdateResult &result)
{
    QStringList lines;
    for (const DocumentComparison &c : result.comparisons) {
        lines << QString() << QStringLiteral("■ %1（%2）").arg(c.name, styleCaption(c.style));
        if (!c.note.isEmpty())
            lines << QStringLiteral("新旧対照表を作成できません。（%1）").arg(c.note);
        else if (c.text.isEmpty())
            lines << QStringLiteral("印刷される文章に変更はありません。");
        else
            lines << c.text.trimmed().split(u'\n');
    }
    return lines;
}

const QList<UpdateReportColumn> &updateReportColumns()
{
    static const QList<UpdateReportColumn> columns = {
        {QStringLiteral("区分"), 10, 60},        {QStringLiteral("場所"), 30, 110},         {QStringLiteral("規程"), 24, 100},
        {QStringLiteral("条"), 10, 60},          {QStringLiteral("出荷時の文章"), 50, 170}, {QStringLiteral("会社の文章"), 50, 170},
        {QStringLiteral("新しい文章"), 50, 170}, {QStringLiteral("根拠"), 24, 90},          {QStringLiteral("注記"), 24, 70}};
    return columns;
}

QList<QStringList> updateReportRows(const UpdateResult &result)
{
    QList<QStringList> rows;
    for (const UpdateEntry &e : result.entries)
        rows << QStringList{
            updateKindCaption(e.kind), e.place, e.documentName, e.article, e.shipped, e.company, e.offered, e.requirement, e.note};
    return rows;
}

void writeUpdateReport(const QString &path, const UpdateResult &result)
{
    QList<XlsxColumn> columns;
    for (const UpdateReportColumn &c : updateReportColumns())
        columns << XlsxColumn{c.heading, double(c.xlsxWidth)};
    writeXlsxSheet(path, QStringLiteral("ディクショナリ更新　") + result.summary(), columns, updateReportRows(result));
}

void writeUpdateText(const QString &path, const QString &text)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text.toUtf8()) < 0 || !file.commit())
        throw Failure(QStringLiteral("ファイル「%1」に書き込めません。").arg(path));
}

} // namespace normaris
