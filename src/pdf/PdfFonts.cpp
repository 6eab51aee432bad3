#include "pdf/PdfFonts.h"

#include "base/Failure.h"

#include <QFontDatabase>
#include <array>
#include <QHash>

namespace normaris::pdf {

namespace {

struct Substitute {
    const char16_t *name;                     // as the document names it
    std::array<const char16_t *, 4> families; // installed faces, the first found is used
};

// The IPA fonts have the metrics of the fonts they replace: full width one em,
// half width half an em, so the label columns stay where the document puts them.
const Substitute kSubstitutes[] = {
    {u"ＭＳ 明朝", {u"IPAMincho", u"IPA明朝", u"Noto Serif CJK JP", u"Noto Serif JP"}},
    {u"ＭＳ ゴシック", {u"IPAGothic", u"IPAゴシック", u"Noto Sans CJK JP", u"Noto Sans JP"}},
};

} // namespace

QString familyFor(const QString &name)
{
    static QHash<QString, QString> chosen;
    if (const auto it = chosen.constFind(name); it != chosen.cend())
        return *it;
    const QStringList installed = QFontDatabase::families();
    QString family = name;
    const Substitute *substitute = &kSubstitutes[0];
    for (const Substitute &s : kSubstitutes)
        if (name == QString::fromUtf16(s.name))
            substitute = &s;
    if (!installed.contains(name)) {
        family.clear();
        for (const char16_t *candidate : substitute->families) {
            if (installed.contains(QString::fromUtf16(candidate))) {
                family = QString::fromUtf16(candidate);
                break;
            }
        }
    }
    if (family.isEmpty())
        throw Failure(QStringLiteral("PDF に使う日本語のフォント（IPA明朝）が見つかりません。"));
    chosen.insert(name, family);
    return family;
}

QFont qtFont(const model::Font &font)
{
    QFont f(familyFor(font.name));
    f.setPointSizeF(font.size);
    f.setBold(font.bold);
    // The same advance widths at every size: the labels line up as in the .docx.
    f.setHintingPreference(QFont::PreferNoHinting);
    f.setKerning(false);
    return f;
}

} // namespace normaris::pdf
