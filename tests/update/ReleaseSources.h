#pragma once
// Releases of the dictionary made by the tests from the project's own sources: the
// sources copied, changed line by line, and turned into a seed file and its release.

#include "base/Database.h"
#include "seed/SeedWriter.h"
#include "update/DictionaryRelease.h"

#include <QDir>
#include <QFile>
#include <QTest>

namespace normaris::test {

inline QString readText(const QString &path)
{
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly))
        qFatal("cannot read %s", qUtf8Printable(path));
    return QString::fromUtf8(f.readAll());
}

inline void writeText(const QString &path, const QString &text)
{
    QFile f(path);
    if (!f.open(QIODevice::WriteOnly) || f.write(text.toUtf8()) < 0)
        qFatal("cannot write %s", qUtf8Printable(path));
}

// The dictionary's sources copied to folder.
inline void copySources(const QString &folder)
{
    const QString from = QStringLiteral(NORMARIS_SOURCE_DIR "/data");
    for (const QString &sub : {QStringLiteral("documents"), QStringLiteral("tables")}) {
        QDir().mkpath(folder + u'/' + sub);
        for (const QString &name : QDir(from + u'/' + sub).entryList(QDir::Files))
            QFile::copy(from + u'/' + sub + u'/' + name, folder + u'/' + sub + u'/' + name);
    }
    for (const QString &name : {QStringLiteral("/release.txt"), QStringLiteral("/法令要件.tsv")})
        QFile::copy(from + name, folder + name);
}

// Both prose styles of document 01, changed alike.
inline void editDocument01(const QString &folder, const std::function<QStringList(QStringList)> &edit)
{
    const QDir dir(folder + QStringLiteral("/documents"));
    for (const QString &name : dir.entryList({QStringLiteral("01-*.txt")}, QDir::Files)) {
        const QString path = dir.filePath(name);
        writeText(path, edit(readText(path).split(u'\n')).join(u'\n'));
    }
}

// The line of the 項 under the 条 given, or -1.
inline int paragraphLine(const QStringList &lines, const QString &article, const QString &paragraph)
{
    int i = int(lines.indexOf(QRegularExpression(QStringLiteral("^条 %1 .*").arg(article))));
    for (++i; i > 0 && i < lines.size(); ++i) {
        const QString t = lines[i].trimmed();
        if (t.startsWith(u"条 ") || t.startsWith(u"章 "))
            return -1;
        if (t == QStringLiteral("項 ") + paragraph)
            return i;
    }
    return -1;
}

// The first segment of the 項 with text added at its end.
inline QStringList appendToParagraph(QStringList lines, const QString &article, const QString &paragraph, const QString &added)
{
    for (int i = paragraphLine(lines, article, paragraph) + 1; i > 0 && i < lines.size(); ++i) {
        if (lines[i].trimmed().startsWith(u"= ")) {
            lines[i] += added;
            return lines;
        }
    }
    qFatal("no 項 %s of 条 %s", qUtf8Printable(paragraph), qUtf8Printable(article));
}

// The 項 and everything under it taken out.
inline QStringList removeParagraph(QStringList lines, const QString &article, const QString &paragraph)
{
    const int at = paragraphLine(lines, article, paragraph);
    if (at < 0)
        qFatal("no 項 %s of 条 %s", qUtf8Printable(paragraph), qUtf8Printable(article));
    int end = at + 1;
    while (end < lines.size()) {
        const QString t = lines[end].trimmed();
        if (t.isEmpty() || t.startsWith(u"項 ") || t.startsWith(u"条 ") || t.startsWith(u"章 "))
            break;
        ++end;
    }
    lines.erase(lines.begin() + at, lines.begin() + end);
    return lines;
}

inline QStringList replaceLine(QStringList lines, const QString &from, const QString &to)
{
    const int at = int(lines.indexOf(QRegularExpression(QStringLiteral("^\\s*") + QRegularExpression::escape(from) + u'$')));
    if (at < 0)
        qFatal("no line %s", qUtf8Printable(from));
    lines[at] = lines[at].left(lines[at].indexOf(from.left(1))) + to;
    return lines;
}

// An article put at the end of the document, stock or in the standard draft.
inline QStringList appendArticle(QStringList lines, const QString &code, const QString &title, const QString &text, bool stock)
{
    while (!lines.isEmpty() && lines.last().isEmpty())
        lines.removeLast();
    lines << QString() << QStringLiteral("条 %1 %2").arg(code, title);
    if (stock)
        lines << QStringLiteral("  標準外");
    lines << QStringLiteral("  項 01") << QStringLiteral("  = ") + text << QString();
    return lines;
}

// The seed file of the sources in folder, under the release name given, and its release.
inline Release makeRelease(const QString &folder, const QString &name, const QString &seedFile)
{
    writeText(folder + QStringLiteral("/release.txt"), name + u'\n');
    const QList<seed::SourceError> errors = seed::generateSeed(folder, seedFile);
    for (const auto &e : errors)
        qWarning("%s", qUtf8Printable(e.toString()));
    if (!errors.isEmpty())
        qFatal("the sources of release %s do not hold", qUtf8Printable(name));
    Release release;
    {
        QSqlDatabase db = openDatabase(seedFile, QStringLiteral("test_release"), OpenMode::ReadOnly);
        release.name = recordedRelease(db);
        release.prints = dictionaryPrints(db);
    }
    closeDatabase(QStringLiteral("test_release"));
    return release;
}

} // namespace normaris::test
