// The layers of the source tree: no #include runs back up a layer. The order is the
// line "Layers, lowest first:" of HACKING.md, read here, so that it is written once.
//
// A core folder includes only its own folder and the folders below it. A folder's
// dialogs (forms/) include any core folder, the dialog toolkit (shell/forms/) and other
// dialogs; the toolkit includes no subsystem's dialog. The fronts (app/, cli/) sit on
// top; the core never includes a dialog nor a front.

#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <QTest>

namespace {

const QString kSource = QStringLiteral(NORMARIS_SOURCE_DIR "/src");

// The folders of HACKING.md's layer line, lowest first: "`base` → `document` → …".
QStringList layerOrder()
{
    QFile hacking(QStringLiteral(NORMARIS_SOURCE_DIR "/HACKING.md"));
    if (!hacking.open(QIODevice::ReadOnly))
        return {};
    const QString text = QString::fromUtf8(hacking.readAll());
    const QRegularExpression line(QStringLiteral("Layers, lowest first:([^\\n]*(?:\\n(?!\\n)[^\\n]*)*)"));
    const QRegularExpressionMatch m = line.match(text);
    if (!m.hasMatch())
        return {};
    QStringList folders;
    const QRegularExpression name(QStringLiteral("`([a-z]+)/?`"));
    for (auto it = name.globalMatch(m.captured(1)); it.hasNext();)
        folders << it.next().captured(1);
    return folders;
}

struct Include {
    QString file;   // relative to src/
    QString target; // as written: "export/DocumentExport.h"
};

QList<Include> projectIncludes()
{
    QList<Include> includes;
    const QRegularExpression include(QStringLiteral("^\\s*#\\s*include\\s+\"([^\"]+)\""), QRegularExpression::MultilineOption);
    QDirIterator it(kSource, {QStringLiteral("*.h"), QStringLiteral("*.cpp")}, QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString path = it.next();
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            continue;
        const QString text = QString::fromUtf8(file.readAll());
        const QString relative = path.mid(kSource.size() + 1);
        for (auto m = include.globalMatch(text); m.hasNext();) {
            const QString target = m.next().captured(1);
            if (target.contains(u'/'))
                includes << Include{relative, target};
        }
    }
    return includes;
}

bool isForms(const QString &path) { return path.section(u'/', 1, 1) == u"forms"; }

} // namespace

class LayersTest : public QObject {
    Q_OBJECT
private slots:
    void orderIsWritten()
    {
        const QStringList order = layerOrder();
        QVERIFY2(order.size() >= 10, qUtf8Printable(order.join(u' ')));
        QCOMPARE(order.first(), QStringLiteral("base"));
        QVERIFY(order.indexOf(QStringLiteral("document")) < order.indexOf(QStringLiteral("fileformats")));
        QVERIFY(order.indexOf(QStringLiteral("fileformats")) < order.indexOf(QStringLiteral("composition")));
        QVERIFY(order.indexOf(QStringLiteral("fileformats")) < order.indexOf(QStringLiteral("export")));
    }

    void noIncludeRunsUp()
    {
        const QStringList order = layerOrder();
        QVERIFY(!order.isEmpty());
        const QStringList fronts = {QStringLiteral("app"), QStringLiteral("cli")};
        QStringList wrong;
        const QList<Include> includes = projectIncludes();
        QVERIFY(includes.size() > 100);
        for (const Include &i : includes) {
            const QString from = i.file.section(u'/', 0, 0);
            const QString to = i.target.section(u'/', 0, 0);
            if (fronts.contains(from))
                continue; // a front may use anything below it
            bool allowed = false;
            if (fronts.contains(to)) {
                allowed = false;
            } else if (isForms(i.file)) {
                // The toolkit stands under every dialog: it includes no subsystem's dialog.
                allowed = from == u"shell" ? (!isForms(i.target) || to == u"shell") : true;
            } else if (isForms(i.target)) {
                allowed = false; // the core never includes a dialog
            } else if (to == u"seed") {
                allowed = false; // the seed tools are linked by the fronts only
            } else {
                const qsizetype own = order.indexOf(from), target = order.indexOf(to);
                allowed = own >= 0 && target >= 0 && target <= own;
            }
            if (!allowed)
                wrong << i.file + QStringLiteral(" → ") + i.target;
        }
        QVERIFY2(wrong.isEmpty(), qUtf8Printable(wrong.join(u'\n')));
    }
};

QTEST_GUILESS_MAIN(LayersTest)
#include "tst_layers.moc"
