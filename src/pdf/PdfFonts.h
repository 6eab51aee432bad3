#pragma once
// The faces that stand in for the fonts a document names: the Japanese fonts of a
// word processor on Windows are not there on Linux, and their metric twins are.

#include "document/DocumentModel.h"

#include <QFont>

namespace normaris::pdf {

// The installed family for a font name of the document: ＭＳ 明朝 is set in IPA明朝
// (or another Japanese Mincho), ＭＳ ゴシック in IPAゴシック. Throws Failure when no
// Japanese face is installed at all.
QString familyFor(const QString &name);

// The QFont of a run's font, sized in points for the device the layout is made for.
QFont qtFont(const model::Font &font);

} // namespace normaris::pdf
