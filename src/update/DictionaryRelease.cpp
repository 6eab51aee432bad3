#include "update/DictionaryRelease.h"

#include "base/Database.h"
#include "base/SqlDialect.h"
#include "base/Failure.h"
#include "rulebase/Schema.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>

namespace normaris {

namespace {

const QChar kField = u'\x1f';
const QChar kRecord = u'\x1e';
const QString kHeader = QStringLiteral("# 条文辞書の版の指紋（ビルドが作るファイル。手で書き換えないこと）");

QString hashOf(const QString &text)
{
    return QString::fromLatin1(QCryptographicHash::hash(text.toUtf8(), QCryptographicHash::Sha1).toHex().left(16));
}

} // namespace

QStringList entryKeyColumns(Level level)
{
    const LevelInfo &info = levelInfo(level);
    QStringList columns = {QString::fromUtf16(info.documentKey)};
    const int own = info.placeDepth - 1;
    for (int i = 0; i < info.placeDepth; ++i)
        columns << (i == own ? QStringLiteral("Code") : placeColumns()[i]);
    return columns;
}

namespace {

// The columns that are the entry's content: not its key, not its selection or edit mark,
// not the segment kind (which its text decides, and which files of the older form lack).
QStringList contentColumns(Level level)
{
    const QStringList keys = entryKeyColumns(level);
    QStringList columns;
    for (const QString &c : schemaTable(dictionaryTable(level)).columnNames()) {
        if (c != u"文章形式Code" && c != u"Code" && c != u"選択フラグ" && c != u"変更フラグ" && c != kSegmentKindColumn
            && !keys.contains(c))
            columns << c;
    }
    return columns;
}

} // namespace

QString columnList(const QStringList &columns) { return columns.join(u','); }

namespace {

QString placeText(const QStringList &place) { return place.join(u'|'); }

// A text on one line of a release file: line ends and tabs as \n and \t.
QString escaped(QString text)
{
    return text.replace(u'\\', QStringLiteral("\\\\")).replace(u'\n', QStringLiteral("\\n")).replace(u'\t', QStringLiteral("\\t"));
}

QString unescaped(const QString &text)
{
    QString out;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] == u'\\' && i + 1 < text.size()) {
            const QChar c = text[++i];
            out += c == u'n' ? QChar(u'\n') : c == u't' ? QChar(u'\t') : c;
        } else {
            out += text[i];
        }
    }
    return out;
}

} // namespace

QString EntryKey::text() const { return style + u'|' + levelCode(level) + u'|' + placeText(place); }

EntryKey EntryKey::parse(const QString &text)
{
    const QStringList parts = text.split(u'|');
    if (parts.size() != 9)
        throw Failure(QStringLiteral("条項の場所「%1」が読めません。").arg(text));
    EntryKey key;
    key.style = parts[0];
    key.level = levelOf(parts[1]);
    key.place = parts.mid(2);
    return key;
}

EntryKey EntryKey::parent() const
{
    EntryKey p = *this;
    const int depth = placeDepth(level);
    if (level == Level::Document)
        return EntryKey{};
    if (depth <= 1) {
        p.level = Level::Document;
        p.place = QStringList(7);
        p.place[0] = place[0];
        return p;
    }
    p.place[depth] = QString();
    for (const LevelInfo &info : kLevels) {
        if (info.placeDepth == depth - 1 && info.level != Level::Closing && info.level != Level::Preamble && info.level != Level::Document)
            p.level = info.level;
    }
    return p;
}

bool EntryKey::isUsers() const
{
    for (const LevelInfo &info : kLevels) {
        if (info.level == Level::Closing || info.level == Level::Preamble)
            continue;
        const QString code = place.value(info.placeDepth);
        if (!code.isEmpty() && isUserCode(info.level, code))
            return true;
    }
    return false;
}

ReleasePrints dictionaryPrints(QSqlDatabase db)
{
    // The content of every entry, and of the words and references by their holder's place
    // (both prose styles share them).
    QMap<QString, QString> shapes, texts;
    QMap<QString, QStringList> stylesAt; // level|place → the entries' keys there
    for (const LevelInfo &info : kLevels) {
        if (info.level == Level::Closing)
            continue;
        const Level level = info.level;
        const QStringList keys = entryKeyColumns(level);
        const QStringList content = contentColumns(level);
        QString order = QStringLiteral("文章形式Code,") + columnList(keys);
        if (info.segmented)
            order += QStringLiteral(", CAST(結合 AS INTEGER)");
        RowReader rows = execSql(db, QStringLiteral("SELECT 文章形式Code, %1, %2 FROM \"%3\" ORDER BY %4")
                                         .arg(columnList(keys), columnList(content), dictionaryTable(level), order));
        while (rows.next()) {
            EntryKey key;
            key.style = rows.value(0).toString();
            key.level = level;
            for (int i = 0; i < keys.size(); ++i)
                key.place[i] = rows.value(1 + i).toString();
            QStringList values;
            for (int i = 0; i < content.size(); ++i)
                values << rows.value(1 + int(keys.size()) + i).toString();
            const QString k = key.text();
            const bool first = !shapes.contains(k);
            if (first)
                stylesAt[levelCode(level) + u'|' + placeText(key.place)] << k;
            shapes[k] += values.join(kField) + kRecord;
            const QString text = values.value(int(content.indexOf(textColumn(level))));
            const bool lineBreak = info.segmented && values.value(int(content.indexOf(QStringLiteral("改行")))) == u"1";
            texts[k] += (!first && lineBreak ? QStringLiteral("\n") : QString()) + text;
        }
    }
    const QString placeSelect =
        QStringLiteral("種別, COALESCE(規程Code,''), COALESCE(章Code,''), COALESCE(条Code,''), COALESCE(項Code,''), "
                       "COALESCE(号Code,''), COALESCE(号の細分丸Code,''), COALESCE(号の細分イロハCode,'')");
    auto holderOf = [](const RowReader &rows) {
        QStringList parts;
        for (int i = 0; i < 8; ++i)
            parts << rows.value(i).toString();
        return parts.join(u'|');
    };
    QMap<QString, QString> wordShapes, wordValues, references;
    {
        RowReader rows = execSql(
            db, QStringLiteral("SELECT %1, Code, 結合, 表示名称, 語句 FROM 変数テーブル語句 ORDER BY %1, Code, CAST(結合 AS INTEGER)")
                    .arg(placeSelect));
        while (rows.next()) {
            const QString at = holderOf(rows);
            wordShapes[at] +=
                QStringList{rows.value(8).toString(), rows.value(9).toString(), rows.value(10).toString()}.join(kField) + kRecord;
            wordValues[at] += rows.value(8).toString() + kField + rows.value(11).toString() + kRecord;
        }
    }
    {
        RowReader rows = execSql(
            db, QStringLiteral("SELECT %1, Code, 結合, 変換参照■規程Code, 変換参照■章Code, 変換参照■条Code, 変換参照■項Code, "
                               "変換参照■号Code, 変換参照■号の細分丸Code, 変換参照■号の細分イロハCode, 変換参照■結合, 変換参照■種別 "
                               "FROM 変数テーブル番号 ORDER BY %1, Code, CAST(結合 AS INTEGER)")
                    .arg(placeSelect));
        while (rows.next()) {
            QStringList values;
            for (int i = 8; i < 19; ++i)
                values << rows.value(i).toString();
            references[holderOf(rows)] += values.join(kField) + kRecord;
        }
    }
    ReleasePrints prints;
    for (auto it = stylesAt.cbegin(); it != stylesAt.cend(); ++it) {
        const QString &at = it.key();
        for (const QString &k : it.value()) {
            EntryPrint p;
            p.shape = hashOf(shapes.value(k) + kRecord + wordShapes.value(at) + kRecord + references.value(at));
            p.words = hashOf(wordValues.value(at));
            p.text = texts.value(k);
            prints.insert(k, p);
        }
    }
    return prints;
}

QString releaseFileText(const Release &release)
{
    QStringList lines;
    for (auto it = release.prints.cbegin(); it != release.prints.cend(); ++it)
        lines << it.key() + u'\t' + it->shape + u'\t' + it->words + u'\t' + escaped(it->text);
    const QString body = lines.join(u'\n');
    return kHeader + QStringLiteral("\nrelease\t%1\nentries\t%2\nchecksum\t%3\n").arg(release.name).arg(lines.size()).arg(hashOf(body))
           + body + u'\n';
}

Release parseReleaseFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw Failure(QStringLiteral("辞書の版のファイル「%1」を読めません。").arg(path));
    const QString text = QString::fromUtf8(file.readAll());
    auto damaged = [&path](const QString &why) {
        return Failure(QStringLiteral("辞書の版のファイル「%1」が壊れています。（%2）").arg(path, why));
    };
    QStringList lines = text.split(u'\n');
    if (!lines.isEmpty() && lines.last().isEmpty())
        lines.removeLast();
    if (lines.size() < 4 || lines[0] != kHeader)
        throw damaged(QStringLiteral("見出しがありません"));
    auto field = [&](int i, const QString &name) {
        const QStringList parts = lines[i].split(u'\t');
        if (parts.size() != 2 || parts[0] != name)
            throw damaged(QStringLiteral("%1 の行がありません").arg(name));
        return parts[1];
    };
    Release release;
    release.name = field(1, QStringLiteral("release"));
    const int count = field(2, QStringLiteral("entries")).toInt();
    const QString checksum = field(3, QStringLiteral("checksum"));
    const QStringList entries = lines.mid(4);
    if (releaseNumber(release.name) == 0 || QFileInfo(path).completeBaseName() != release.name)
        throw damaged(QStringLiteral("版の名前「%1」がファイル名と合いません").arg(release.name));
    if (entries.size() != count || hashOf(entries.join(u'\n')) != checksum)
        throw damaged(QStringLiteral("指紋の行が記録と合いません"));
    for (const QString &line : entries) {
        const QStringList parts = line.split(u'\t');
        if (parts.size() != 4)
            throw damaged(QStringLiteral("行「%1」").arg(line));
        EntryKey::parse(parts[0]);
        release.prints.insert(parts[0], EntryPrint{parts[1], parts[2], unescaped(parts[3])});
    }
    return release;
}

QList<Release> readReleases(const QString &folder)
{
    QList<Release> releases;
    const QStringList files = QDir(folder).entryList({QStringLiteral("*.tsv")}, QDir::Files, QDir::Name);
    for (const QString &f : files)
        releases << parseReleaseFile(QDir(folder).filePath(f));
    std::sort(releases.begin(), releases.end(),
              [](const Release &a, const Release &b) { return releaseNumber(a.name) < releaseNumber(b.name); });
    return releases;
}

int releaseNumber(const QString &name)
{
    static const QRegularExpression form(QStringLiteral("^(20[0-9]{2})\\.(0[1-9]|1[0-2])$"));
    const auto m = form.match(name);
    return m.hasMatch() ? m.captured(1).toInt() * 100 + m.captured(2).toInt() : 0;
}

QString releaseName(int number)
{
    if (number <= 0)
        return {};
    return QStringLiteral("%1.%2").arg(number / 100).arg(number % 100, 2, 10, QLatin1Char('0'));
}

QString recordedRelease(QSqlDatabase db) { return releaseName(scalar(db, SqlDialect::of(db).readReleaseSql).toInt()); }

void recordRelease(QSqlDatabase db, const QString &name)
{
    // A pragma takes no bound parameter: the number is made here from checked digits.
    execSql(db, SqlDialect::of(db).writeReleaseSql.arg(releaseNumber(name)));
}

} // namespace normaris
