#include "seed/SeedParser.h"
#include "base/Excerpt.h"

#include "update/DictionaryRelease.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QStringDecoder>

namespace normaris::seed {

QString Place::describe() const
{
    QStringList parts = {QStringLiteral("規程") + kitei};
    const std::pair<const char *, const QString *> levels[] = {{"章", &sho}, {"条", &jo},   {"項", &kou},
                                                               {"号", &gou}, {"丸", &maru}, {"イロハ", &iroha}};
    for (const auto &[label, code] : levels) {
        if (!code->isEmpty())
            parts << QString::fromUtf8(label) + *code;
    }
    return parts.join(u' ');
}

namespace {

// The clause levels below 条 and the place column each sets.
struct ClauseKeyword {
    const char *keyword;
    Level level;
    QString Place::*code;
};
const ClauseKeyword kClauseKeywords[] = {
    {"項", Level::Paragraph, &Place::kou},
    {"号", Level::Item, &Place::gou},
    {"丸", Level::Maru, &Place::maru},
    {"イロハ", Level::Iroha, &Place::iroha},
};

// At most the first 20 characters of what a line gives, printable.
QString excerpt(const QString &text) { return printableExcerpt(text, 20); }

class DocumentParser {
public:
    DocumentParser(const QString &file, QList<SourceError> &errors) : m_errors(errors) { m_doc.file = file; }

    Document parse(const QString &text)
    {
        const QStringList lines = text.split(u'\n');
        for (int i = 0; i < lines.size(); ++i) {
            m_line = i + 1;
            QString line = lines[i];
            if (line.endsWith(u'\r'))
                line.chop(1);
            parseLine(line);
        }
        if (m_doc.code.isEmpty())
            fail(1, QStringLiteral("「規程」の行がありません"));
        if (m_doc.style.isEmpty())
            fail(1, QStringLiteral("「文章形式」の行がありません"));
        return m_doc;
    }

private:
    void fail(int line, const QString &message) { m_errors << SourceError{m_doc.file, line, message}; }
    void fail(const QString &message) { fail(m_line, message); }

    Clause *current() { return m_doc.clauses.isEmpty() ? nullptr : &m_doc.clauses.last(); }

    // The clause that segments, words, references and templates attach to.
    Clause *textClause()
    {
        Clause *c = current();
        if (!c || c->level == Level::Chapter || c->level == Level::Article) {
            fail(QStringLiteral("本文を持つ条項（前文・項・号・丸・イロハ）の後に置いてください"));
            return nullptr;
        }
        return c;
    }

    void parseLine(const QString &raw)
    {
        const QString line = raw.trimmed();
        if (line.isEmpty() || line.startsWith(u'#'))
            return;
        if (line.startsWith(u'=')) {
            parseSegment(raw.mid(raw.indexOf(u'=') + 1));
            return;
        }
        const qsizetype space = line.indexOf(u' ');
        const QString keyword = space < 0 ? line : line.left(space);
        const QString rest = space < 0 ? QString() : line.mid(space + 1).trimmed();

        if (keyword == u"文章形式")
            return setHeader(m_doc.style, rest, QStringLiteral("^[12]$"));
        if (keyword == u"文章種別")
            return setHeader(m_doc.kind, rest, QStringLiteral("^[12]$"));
        if (keyword == u"規程")
            return parseDocumentLine(rest);
        if (keyword == u"正式名称")
            return parseFormalName(rest);
        if (keyword == u"前文") {
            startClause(Level::Preamble, {});
            return;
        }
        if (keyword == u"章")
            return parseChapter(rest);
        if (keyword == u"条")
            return parseArticle(rest);
        for (const ClauseKeyword &k : kClauseKeywords) {
            if (keyword == QString::fromUtf8(k.keyword))
                return parseSubClause(k, rest);
        }
        if (keyword == u"語句")
            return parseWord(rest);
        if (keyword == u"参照")
            return parseReference(rest);
        if (keyword == u"テンプレート")
            return parseTemplate(rest);
        if (keyword == u"標準案") {
            m_doc.standardDraft = true;
            return;
        }
        if (keyword == u"標準外")
            return markStock();
        fail(QStringLiteral("「%1」は分からない行です").arg(excerpt(keyword)));
    }

    void setHeader(QString &field, const QString &value, const QString &pattern)
    {
        if (!QRegularExpression(pattern).match(value).hasMatch())
            fail(QStringLiteral("値「%1」が正しくありません").arg(excerpt(value)));
        else
            field = value;
    }

    // "CODE rest": the code and the text after it.
    bool splitCode(const QString &rest, QString &code, QString &text)
    {
        const qsizetype space = rest.indexOf(u' ');
        code = space < 0 ? rest : rest.left(space);
        text = space < 0 ? QString() : rest.mid(space + 1).trimmed();
        if (code.isEmpty() || !QRegularExpression(QStringLiteral("^[0-9]+$")).match(code).hasMatch()) {
            fail(QStringLiteral("Codeは数字で書いてください: 「%1」").arg(excerpt(code)));
            return false;
        }
        return true;
    }

    void parseDocumentLine(const QString &rest)
    {
        if (!m_doc.code.isEmpty())
            return fail(QStringLiteral("「規程」の行は一つのファイルに一つだけです"));
        QString code, name;
        if (!splitCode(rest, code, name))
            return;
        if (name.isEmpty())
            fail(QStringLiteral("規程の表示名称がありません"));
        m_doc.code = code;
        m_doc.name = name;
        m_doc.line = m_line;
        if (m_doc.formalName.isEmpty())
            m_doc.formalName = name;
    }

    void parseFormalName(const QString &rest)
    {
        if (rest.isEmpty())
            return fail(QStringLiteral("正式名称がありません"));
        Clause *c = current();
        if (!c)
            m_doc.formalName = rest;
        else if (c->level == Level::Article)
            c->formalName = rest;
        else
            fail(QStringLiteral("正式名称は規程か条の直後に置いてください"));
    }

    Clause &startClause(Level level, Place place)
    {
        Clause c;
        c.level = level;
        c.place = std::move(place);
        c.place.kitei = m_doc.code;
        c.line = m_line;
        if (level == Level::Preamble)
            c.place = Place{m_doc.code, {}, {}, {}, {}, {}, {}};
        m_doc.clauses << c;
        return m_doc.clauses.last();
    }

    void parseChapter(const QString &rest)
    {
        QString code, title;
        if (!splitCode(rest, code, title))
            return;
        Place place;
        place.sho = code;
        Clause &c = startClause(Level::Chapter, place);
        c.title = title;
        m_chapter = code;
        if (title.isEmpty())
            fail(QStringLiteral("章の見出しがありません"));
    }

    void parseArticle(const QString &rest)
    {
        QString code, title;
        if (!splitCode(rest, code, title))
            return;
        if (m_chapter.isEmpty()) {
            // The chapterless body: a 章 "00" that holds the articles and is never printed.
            // It has a name all the same: a row without text prints as a template place.
            Place body;
            body.sho = m_chapter = QStringLiteral("00");
            Clause &chapter = startClause(Level::Chapter, body);
            chapter.line = m_line;
            chapter.title = kChapterlessBody;
        }
        Place place;
        place.sho = m_chapter;
        place.jo = code;
        Clause &c = startClause(Level::Article, place);
        c.title = title;
        c.formalName = title;
        m_article = place;
    }

    void parseSubClause(const ClauseKeyword &k, const QString &rest)
    {
        QString code, extra;
        if (!splitCode(rest, code, extra))
            return;
        if (!extra.isEmpty())
            fail(QStringLiteral("本文は「=」の行に書いてください"));
        if (m_article.jo.isEmpty())
            return fail(QStringLiteral("%1の前に条がありません").arg(QString::fromUtf8(k.keyword)));
        // The parent is the last clause one level up; a 項 hangs directly under the 条.
        const int depth = int(k.level) - int(Level::Paragraph);
        Place place = m_article;
        for (int d = 0; d < depth; ++d) {
            const QString &parentCode = m_lowerCodes[d];
            if (parentCode.isEmpty())
                return fail(QStringLiteral("%1の上の段がありません").arg(QString::fromUtf8(k.keyword)));
            place.*(kClauseKeywords[d].code) = parentCode;
        }
        place.*(k.code) = code;
        m_lowerCodes[depth] = code;
        for (int d = depth + 1; d < 4; ++d)
            m_lowerCodes[d].clear();
        startClause(k.level, place);
    }

    void parseSegment(QString text)
    {
        Clause *c = textClause();
        if (!c)
            return;
        Segment s;
        if (text.startsWith(u'↵')) {
            s.lineBreak = true;
            text.remove(0, 1);
        }
        if (text.startsWith(u' '))
            text.remove(0, 1);
        s.text = text;
        if (c->segments.isEmpty() && s.lineBreak)
            fail(QStringLiteral("条項の最初の文章の前に改行は置けません"));
        c->segments << s;
    }

    void parseWord(const QString &rest)
    {
        Clause *c = textClause();
        if (!c)
            return;
        static const QRegularExpression pattern(QStringLiteral("^([0-9]{4}) +(.+?) *= *(.*)$"));
        const auto m = pattern.match(rest);
        if (!m.hasMatch())
            return fail(QStringLiteral("語句の行は「語句 0001 表示名称 = 既定の語句」の形です"));
        c->words << Word{m.captured(1), m.captured(2), m.captured(3), m_line};
    }

    void parseReference(const QString &rest)
    {
        Clause *c = textClause();
        if (!c)
            return;
        const QStringList tokens = rest.split(u' ', Qt::SkipEmptyParts);
        if (tokens.isEmpty() || !QRegularExpression(QStringLiteral("^[0-9]{4}$")).match(tokens[0]).hasMatch())
            return fail(QStringLiteral("参照の行は「参照 0001 条0003 項02」の形です"));
        Reference r;
        r.code = tokens[0];
        r.line = m_line;
        r.target.kitei = m_doc.code;
        static const QRegularExpression token(QStringLiteral("^(規程|章|条|項|号|丸|イロハ|結合)([0-9]+)$"));
        for (qsizetype i = 1; i < tokens.size(); ++i) {
            const auto m = token.match(tokens[i]);
            if (!m.hasMatch())
                return fail(QStringLiteral("参照先「%1」が分かりません").arg(excerpt(tokens[i])));
            const QString label = m.captured(1), code = m.captured(2);
            if (label == u"規程") {
                r.target.kitei = code;
            } else if (label == u"章") {
                r.target.sho = code;
                r.targetLevel = Level::Chapter;
            } else if (label == u"条") {
                r.target.jo = code;
                r.targetLevel = Level::Article;
            } else if (label == u"項") {
                r.target.kou = code;
                r.targetLevel = Level::Paragraph;
            } else if (label == u"号") {
                r.target.gou = code;
                r.targetLevel = Level::Item;
            } else if (label == u"丸") {
                r.target.maru = code;
                r.targetLevel = Level::Maru;
            } else if (label == u"イロハ") {
                r.target.iroha = code;
                r.targetLevel = Level::Iroha;
            } else {
                r.targetSegment = code;
            }
        }
        c->references << r;
    }

    void markStock()
    {
        if (Clause *c = current())
            c->stock = true;
        else
            fail(QStringLiteral("標準外は条項の直後に置いてください"));
    }

    void parseTemplate(const QString &rest)
    {
        Clause *c = textClause();
        if (!c)
            return;
        if (!QRegularExpression(QStringLiteral("^[0-9]{2}$")).match(rest).hasMatch())
            return fail(QStringLiteral("テンプレートのCodeは2桁の数字です"));
        if (c->segments.isEmpty())
            return fail(QStringLiteral("テンプレートは差し込む場所の区切り（「=↵」の行）の後に置いてください"));
        c->segments.last().templateCode = rest;
    }

    Document m_doc;
    QList<SourceError> &m_errors;
    int m_line = 0;
    QString m_chapter;
    Place m_article;
    QString m_lowerCodes[4];
};

} // namespace

QString decodeSource(const QString &file, const QByteArray &bytes, QList<SourceError> &errors)
{
    const QList<QByteArray> lines = bytes.split('\n');
    for (qsizetype i = 0; i < lines.size(); ++i) {
        QByteArray line = lines[i];
        if (line.endsWith('\r'))
            line.chop(1);
        QStringDecoder decoder(QStringDecoder::Utf8, QStringConverter::Flag::Stateless);
        const QString text = decoder.decode(line);
        QString why;
        if (decoder.hasError())
            why = QStringLiteral("UTF-8の文字として読めないバイトがあります（ファイルはUTF-8で保存してください）");
        for (qsizetype k = 0; why.isEmpty() && k < text.size(); ++k) {
            const QChar c = text[k];
            const bool bom = i == 0 && k == 0 && c == QChar::ByteOrderMark;
            if (!bom && c != u'\t' && (c.category() == QChar::Other_Control || c.category() == QChar::Other_Format))
                why = QStringLiteral("制御文字があります（U+%1）").arg(QString::number(c.unicode(), 16).rightJustified(4, u'0').toUpper());
        }
        if (!why.isEmpty()) {
            errors << SourceError{file, int(i + 1), why};
            return {};
        }
    }
    QString text = QString::fromUtf8(bytes);
    if (text.startsWith(QChar::ByteOrderMark))
        text.remove(0, 1);
    return text;
}

Document parseDocument(const QString &file, const QString &text, QList<SourceError> &errors)
{
    return DocumentParser(file, errors).parse(text);
}

FixedTable parseTable(const QString &file, const QString &text, QList<SourceError> &errors)
{
    FixedTable table;
    table.file = file;
    QStringList lines = text.split(u'\n');
    for (QString &l : lines) {
        if (l.endsWith(u'\r'))
            l.chop(1);
    }
    while (!lines.isEmpty() && lines.last().isEmpty())
        lines.removeLast();
    if (lines.size() < 2) {
        errors << SourceError{file, 1, QStringLiteral("表の名前と列の行が要ります")};
        return table;
    }
    table.table = lines[0].trimmed();
    table.columns = lines[1].split(u'\t');
    for (qsizetype i = 2; i < lines.size(); ++i) {
        if (lines[i].startsWith(u'#') || lines[i].isEmpty())
            continue;
        const QStringList fields = lines[i].split(u'\t');
        if (fields.size() != table.columns.size()) {
            errors << SourceError{file, int(i + 1), QStringLiteral("列の数が%1ではありません").arg(table.columns.size())};
            continue;
        }
        table.rows << fields;
    }
    return table;
}

QString readReleaseName(const QString &folder, QList<SourceError> &errors)
{
    const QString shown = kReleaseNameFile;
    QFile f(folder + u'/' + kReleaseNameFile);
    if (!f.exists())
        return {}; // sources of no release: the build's release check refuses them
    if (!f.open(QIODevice::ReadOnly)) {
        errors << SourceError{shown, 0, QStringLiteral("読めません")};
        return {};
    }
    const QString name = QString::fromUtf8(f.readAll()).trimmed();
    if (releaseNumber(name) == 0)
        errors << SourceError{shown, 1, QStringLiteral("版の名前「%1」は 2026.11 の形で書いてください").arg(name)};
    return name;
}

Dictionary readDictionary(const QString &folder, QList<SourceError> &errors)
{
    Dictionary dictionary;
    const auto readAll = [&](const QString &subfolder, const QString &pattern, const auto &parse) {
        const QDir dir(folder + u'/' + subfolder);
        for (const QString &name : dir.entryList({pattern}, QDir::Files, QDir::Name)) {
            const QString shown = subfolder + u'/' + name;
            QFile f(dir.filePath(name));
            if (!f.open(QIODevice::ReadOnly)) {
                errors << SourceError{shown, 0, QStringLiteral("読めません")};
                continue;
            }
            const qsizetype before = errors.size();
            const QString text = decodeSource(shown, f.readAll(), errors);
            if (errors.size() == before)
                parse(shown, text);
        }
    };
    readAll(QStringLiteral("documents"), QStringLiteral("*.txt"),
            [&](const QString &file, const QString &text) { dictionary.documents << parseDocument(file, text, errors); });
    readAll(QStringLiteral("tables"), QStringLiteral("*.tsv"),
            [&](const QString &file, const QString &text) { dictionary.fixedTables << parseTable(file, text, errors); });
    dictionary.release = readReleaseName(folder, errors);
    return dictionary;
}

} // namespace normaris::seed
