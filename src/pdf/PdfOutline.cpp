#include "pdf/PdfOutline.h"

#include "base/Failure.h"

#include <QRegularExpression>

namespace normaris::pdf {

namespace {

[[noreturn]] void unreadable() { throw Failure(QStringLiteral("PDFにしおりを付けられません。")); }

// The first number after key in text, from.
qint64 numberAfter(const QByteArray &text, const QByteArray &key, qsizetype from = 0)
{
    const qsizetype at = text.indexOf(key, from);
    if (at < 0)
        unreadable();
    qsizetype i = at + key.size();
    while (i < text.size() && (text[i] == ' ' || text[i] == '\n' || text[i] == '\r'))
        ++i;
    qsizetype end = i;
    while (end < text.size() && text[end] >= '0' && text[end] <= '9')
        ++end;
    if (end == i)
        unreadable();
    return text.mid(i, end - i).toLongLong();
}

// The dictionary of object number n: what stands between "n 0 obj" and "endobj".
QByteArray objectText(const QByteArray &pdf, qint64 n)
{
    const QByteArray head = QByteArray::number(n) + " 0 obj";
    qsizetype at = 0;
    while ((at = pdf.indexOf(head, at)) >= 0) {
        // The number must start a line, not end another one ("12 0 obj" in "112 0 obj").
        if (at == 0 || pdf[at - 1] == '\n' || pdf[at - 1] == '\r')
            break;
        at += head.size();
    }
    if (at < 0)
        unreadable();
    const qsizetype end = pdf.indexOf("endobj", at);
    if (end < 0)
        unreadable();
    return pdf.mid(at + head.size(), end - at - head.size());
}

// A text string as PDF keeps it: UTF-16BE with its byte order mark, in hex.
QByteArray textString(const QString &text)
{
    QByteArray bytes("FEFF");
    for (const QChar c : text)
        bytes += QByteArray::number(c.unicode(), 16).rightJustified(4, '0').toUpper();
    return '<' + bytes + '>';
}

struct Node {
    int parent = -1; // -1: the outline's root
    QList<int> kids;
};

} // namespace

QByteArray withOutline(const QByteArray &pdf, const QList<OutlineEntry> &entries, double pageHeight)
{
    if (entries.isEmpty())
        return pdf;
    const qsizetype trailerAt = pdf.lastIndexOf("trailer");
    const qsizetype startAt = pdf.lastIndexOf("startxref");
    if (trailerAt < 0 || startAt < 0)
        unreadable();
    const QByteArray trailer = pdf.mid(trailerAt, startAt - trailerAt);
    const qint64 size = numberAfter(trailer, "/Size");
    const qint64 root = numberAfter(trailer, "/Root");
    const bool hasInfo = trailer.contains("/Info");
    const qint64 info = hasInfo ? numberAfter(trailer, "/Info") : 0;
    const qint64 previous = numberAfter(pdf, "startxref", startAt);

    // The pages in order: the kids of the catalog's page tree.
    const QByteArray catalog = objectText(pdf, root);
    const QByteArray pagesTree = objectText(pdf, numberAfter(catalog, "/Pages"));
    const qsizetype kidsAt = pagesTree.indexOf("/Kids");
    const qsizetype kidsEnd = pagesTree.indexOf(']', kidsAt);
    if (kidsAt < 0 || kidsEnd < 0)
        unreadable();
    QList<qint64> pages;
    static const QRegularExpression reference(QStringLiteral("(\\d+)\\s+0\\s+R"));
    const QString kids = QString::fromLatin1(pagesTree.mid(kidsAt, kidsEnd - kidsAt));
    for (auto it = reference.globalMatch(kids); it.hasNext();)
        pages << it.next().captured(1).toLongLong();
    if (pages.isEmpty())
        unreadable();

    // The tree: a level 2 entry under the level 1 entry before it.
    QList<Node> nodes(entries.size());
    QList<int> top;
    int lastTop = -1;
    for (int i = 0; i < entries.size(); ++i) {
        if (entries[i].level > 1 && lastTop >= 0) {
            nodes[i].parent = lastTop;
            nodes[lastTop].kids << i;
        } else {
            top << i;
            if (entries[i].level == 1)
                lastTop = i;
        }
    }
    const qint64 outlineRoot = size;
    const auto objectOf = [&](int i) { return size + 1 + i; };
    const auto ref = [](qint64 n) { return QByteArray::number(n) + " 0 R"; };

    QByteArray update = pdf.endsWith('\n') ? QByteArray() : QByteArray("\n");
    QList<std::pair<qint64, qint64>> offsets; // object, its offset in the file
    const auto add = [&](qint64 number, const QByteArray &dictionary) {
        offsets.append({number, pdf.size() + update.size()});
        update += QByteArray::number(number) + " 0 obj\n" + dictionary + "\nendobj\n";
    };
    // The catalog again, naming the outline and opening the reader's bookmarks.
    QByteArray newCatalog = catalog.trimmed();
    const qsizetype close = newCatalog.lastIndexOf(">>");
    if (close < 0)
        unreadable();
    newCatalog.insert(close, "/Outlines " + ref(outlineRoot) + "\n/PageMode /UseOutlines\n");
    add(root, newCatalog);
    add(outlineRoot, "<<\n/Type /Outlines\n/First " + ref(objectOf(top.first())) + "\n/Last " + ref(objectOf(top.last())) + "\n/Count "
                         + QByteArray::number(top.size()) + "\n>>");
    for (int i = 0; i < entries.size(); ++i) {
        const OutlineEntry &e = entries[i];
        const QList<int> &siblings = nodes[i].parent < 0 ? top : nodes[nodes[i].parent].kids;
        const qsizetype at = siblings.indexOf(i);
        const qint64 page = pages.value(qBound(0, e.page - 1, int(pages.size()) - 1));
        QByteArray d = "<<\n/Title " + textString(e.title) + "\n/Parent "
                       + ref(nodes[i].parent < 0 ? outlineRoot : objectOf(nodes[i].parent)) + "\n/Dest [" + ref(page) + " /XYZ 0 "
                       + QByteArray::number(pageHeight - e.top, 'f', 2) + " null]\n";
        if (at > 0)
            d += "/Prev " + ref(objectOf(siblings[at - 1])) + "\n";
        if (at + 1 < siblings.size())
            d += "/Next " + ref(objectOf(siblings[at + 1])) + "\n";
        if (!nodes[i].kids.isEmpty()) {
            // Closed: a chapter shows its articles when the reader opens it.
            d += "/First " + ref(objectOf(nodes[i].kids.first())) + "\n/Last " + ref(objectOf(nodes[i].kids.last())) + "\n/Count -"
                 + QByteArray::number(nodes[i].kids.size()) + "\n";
        }
        add(objectOf(i), d + ">>");
    }

    // One subsection for the catalog, one for the new objects in a row.
    const qint64 xref = pdf.size() + update.size();
    const auto line = [](qint64 offset) { return QByteArray::number(offset).rightJustified(10, '0') + " 00000 n \n"; };
    update += "xref\n" + QByteArray::number(root) + " 1\n" + line(offsets.first().second);
    update += QByteArray::number(outlineRoot) + ' ' + QByteArray::number(offsets.size() - 1) + '\n';
    for (qsizetype i = 1; i < offsets.size(); ++i)
        update += line(offsets[i].second);
    update += "trailer\n<<\n/Size " + QByteArray::number(objectOf(int(entries.size()))) + "\n/Root " + ref(root) + '\n';
    if (hasInfo)
        update += "/Info " + ref(info) + '\n';
    update += "/Prev " + QByteArray::number(previous) + "\n>>\nstartxref\n" + QByteArray::number(xref) + "\n%%EOF\n";
    return pdf + update;
}

} // namespace normaris::pdf
