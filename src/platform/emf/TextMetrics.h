#pragma once

#include "platform/emf/EmfTypes.h"

#include <QFont>
#include <QStringView>
#include <vector>

namespace Emf {

// Text is measured the way the reference screen measures it: with QFontMetricsF of the named
// face, one logical unit being one pixel of a 96 dpi screen. "Arial" resolves to Liberation
// Sans, whose advances are the same. Needs a Qt GUI application object.

// A QFont in pixels for a logical font: a negative height is the character (em) height, a
// positive height the cell height (ascent plus descent), 0 the default 16-pixel cell.
QFont FontFromLogFont(const LogFont& font);

// Width (sum of the rounded advances) and height (ascent plus descent, rounded) of one line.
SizeL MeasureText(const LogFont& font, QStringView text);

// The distance from each character's start to the next one's, in whole units, chosen so that
// the running sum never drifts from the unrounded advance by half a unit or more.
std::vector<std::uint32_t> CharacterAdvances(const LogFont& font, QStringView text);

// The font of the stock system font object.
LogFont SystemFont();

} // namespace Emf
