#pragma once

#include <QPalette>

#include "displays/desktop/desktop_settings.h"

namespace desktop {

// The palette of Qt as the desktop's user wants it: dark, with another accent or of high contrast.
// In any, disabled texts can be read, the accent can be seen, and tool tips have the dialog's
// colours.
QPalette PaletteFor(const DesktopSettings& settings, const QPalette& of_qt);

// A colour between two.
QColor Mix(const QColor& a, const QColor& b, double share_of_b);

// What divides and frames things in that palette.
QColor BorderColour(const QPalette& palette, QPalette::ColorGroup group);

}  // namespace desktop
