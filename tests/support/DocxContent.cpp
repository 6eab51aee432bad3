#include "DocxContent.h"

#include <QXmlStreamReader>

#include <zip.h>

namespace normaris::test {

QMap<QString, QByteArray> zipEntries(const QString &path)
{
    QMap<QString, QByteArray> entries;
    int error = 0;
    zip_t *archive = zip_open(path.toUtf8().constData(), ZIP_RDONLY | ZIP_CHECKCONS, &error);
    if (!archive)
        return entries;
    const zip_int64_t count = zip_get_num_entries(archive, 0);
    for (zip_int64_t i = 0; i < count; ++i) {
        zip_stat_t stat;
        if (zip_stat_index(archive, zip_uint64_t(i), 0, &stat) < 0)
            continue;
        zip_file_t *file = zip_fopen_index(archive, zip_uint64_t(i), 0);
        if (!file)
            continue;
        QByteArray data(qsizetype(stat.size), '\0');
        if (zip_fread(file, data.data(), stat.size) == zip_int64_t(stat.size))
            entries.insert(QString::fromUtf8(stat.name), data);
        zip_fclose(file);
    }
    zip_close(archive);
    return entries;
}

QString DocxParagraph::text() const
{
    QString all;
    for (const DocxRun &run : runs)
        all += run.text;
    return all;
}

namespace {

const QString kWordNs = QStringLiteral("http://schemas.openxmlformats.org/wordprocessingml/2006/main");

void addProperty(Properties &props, const QXmlStreamReader &reader)
{
    const QString name = reader.name().toString();
    if (reader.attributes().isEmpty())
        props.insert(name, QString());
    for (const QXmlStreamAttribute &a : reader.attributes())
        props.insert(name + u'@' + a.name().toString(), a.value().toString());
}

} // namespace

DocxBody readBody(const QByteArray &documentXml)
{
    DocxBody body;
    QXmlStreamReader reader(documentXml);
    QStringList path; // the open elements' local names
    while (!reader.atEnd()) {
        reader.readNext();
        if (reader.isEndElement()) {
            path.removeLast();
            continue;
        }
        if (!reader.isStartElement())
            continue;
        const QString name = reader.name().toString();
        const QString parent = path.value(path.size() - 1), grandparent = path.value(path.size() - 2);
        const bool inParagraph = path.contains(QStringLiteral("p")) && !body.paragraphs.isEmpty();
        DocxParagraph *paragraph = inParagraph ? &body.paragraphs.last() : nullptr;
        DocxRun *run = paragraph && path.contains(QStringLiteral("r")) && !paragraph->runs.isEmpty() ? &paragraph->runs.last() : nullptr;
        if (name == u"p") {
            body.paragraphs.append(DocxParagraph{});
        } else if (name == u"r" && paragraph) {
            paragraph->runs.append(DocxRun{});
        } else if (parent == u"rPr" && grandparent == u"r" && run) {
            addProperty(run->props, reader);
        } else if (parent == u"rPr" && grandparent == u"pPr" && paragraph) {
            addProperty(paragraph->markProps, reader);
        } else if (parent == u"pPr" && name != u"rPr" && paragraph) {
            addProperty(paragraph->props, reader);
        } else if (name == u"t" && run) {
            const bool preserve = reader.attributes().value(QStringLiteral("xml:space")) == u"preserve";
            const QString text = reader.readElementText();
            const bool blanks = text.startsWith(u' ') || text.endsWith(u' ') || text.contains(QStringLiteral("  "));
            if (blanks && !preserve)
                run->preserved = false;
            run->text += text;
            continue; // readElementText() has consumed the end tag
        } else if (name == u"tab" && run) {
            run->text += u'\t';
        } else if (name == u"br" && run) {
            run->pageBreak = reader.attributes().value(kWordNs, QStringLiteral("type")) == u"page";
        }
        path.append(name);
    }
    if (reader.hasError())
        body.error = reader.errorString();
    return body;
}

QString xmlError(const QByteArray &xml)
{
    QXmlStreamReader reader(xml);
    while (!reader.atEnd())
        reader.readNext();
    return reader.hasError() ? QStringLiteral("%1 (line %2)").arg(reader.errorString()).arg(reader.lineNumber()) : QString();
}

QStringList propertyOrderErrors(const QByteArray &xml)
{
    // The children of CT_RPr and CT_PPr in schema order, as far as they matter here.
    static const QStringList runOrder = {u"rStyle"_qs,
                                         u"rFonts"_qs,
                                         u"b"_qs,
                                         u"bCs"_qs,
                                         u"i"_qs,
                                         u"iCs"_qs,
                                         u"caps"_qs,
                                         u"smallCaps"_qs,
                                         u"strike"_qs,
                                         u"dstrike"_qs,
                                         u"outline"_qs,
                                         u"shadow"_qs,
                                         u"emboss"_qs,
                                         u"imprint"_qs,
                                         u"noProof"_qs,
                                         u"snapToGrid"_qs,
                                         u"vanish"_qs,
                                         u"webHidden"_qs,
                                         u"color"_qs,
                                         u"spacing"_qs,
                                         u"w"_qs,
                                         u"kern"_qs,
                                         u"position"_qs,
                                         u"sz"_qs,
                                         u"szCs"_qs,
                                         u"highlight"_qs,
                                         u"u"_qs,
                                         u"effect"_qs,
                                         u"bdr"_qs,
                                         u"shd"_qs,
                                         u"fitText"_qs,
                                         u"vertAlign"_qs,
                                         u"rtl"_qs,
                                         u"cs"_qs,
                                         u"em"_qs,
                                         u"lang"_qs,
                                         u"eastAsianLayout"_qs,
                                         u"specVanish"_qs,
                                         u"oMath"_qs};
    static const QStringList paragraphOrder = {u"pStyle"_qs,
                                               u"keepNext"_qs,
                                               u"keepLines"_qs,
                                               u"pageBreakBefore"_qs,
                                               u"framePr"_qs,
                                               u"widowControl"_qs,
                                               u"numPr"_qs,
                                               u"suppressLineNumbers"_qs,
                                               u"pBdr"_qs,
                                               u"shd"_qs,
                                               u"tabs"_qs,
                                               u"suppressAutoHyphens"_qs,
                                               u"kinsoku"_qs,
                                               u"wordWrap"_qs,
                                               u"overflowPunct"_qs,
                                               u"topLinePunct"_qs,
                                               u"autoSpaceDE"_qs,
                                               u"autoSpaceDN"_qs,
                                               u"bidi"_qs,
                                               u"adjustRightInd"_qs,
                                               u"snapToGrid"_qs,
                                               u"spacing"_qs,
                                               u"ind"_qs,
                                               u"contextualSpacing"_qs,
                                               u"mirrorIndents"_qs,
                                               u"suppressOverlap"_qs,
                                               u"jc"_qs,
                                               u"textDirection"_qs,
                                               u"textAlignment"_qs,
                                               u"textboxTightWrap"_qs,
                                               u"outlineLvl"_qs,
                                               u"divId"_qs,
                                               u"cnfStyle"_qs,
                                               u"rPr"_qs,
                                               u"sectPr"_qs,
                                               u"pPrChange"_qs};

    QStringList errors;
    QXmlStreamReader reader(xml);
    // For each open element: its name, and the schema position of its last child.
    QList<std::pair<QString, qsizetype>> open;
    while (!reader.atEnd()) {
        reader.readNext();
        if (reader.isEndElement()) {
            open.removeLast();
        } else if (reader.isStartElement()) {
            const QString name = reader.name().toString();
            if (!open.isEmpty() && (open.last().first == u"rPr" || open.last().first == u"pPr")) {
                const QStringList &order = open.last().first == u"rPr" ? runOrder : paragraphOrder;
                const qsizetype at = order.indexOf(name);
                if (at < 0)
                    errors << QStringLiteral("unknown %1 in %2 at line %3").arg(name, open.last().first).arg(reader.lineNumber());
                else if (at <= open.last().second)
                    errors << QStringLiteral("%1 out of order in %2 at line %3").arg(name, open.last().first).arg(reader.lineNumber());
                open.last().second = at;
            }
            open.append({name, -1});
        }
    }
    return errors;
}

} // namespace normaris::test
