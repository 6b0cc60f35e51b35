#include "displays/desktop/colours.h"

#include <algorithm>
#include <cmath>

namespace desktop {
namespace {

// Contrasts as the Web's guidelines for accessibility count them, from 1 to 21.
constexpr double kLeastContrast = 3;
constexpr double kHighContrast = 7;
constexpr double kBlackOnWhite = 20;  // and what is nearly that

// How much of its colour a disabled text keeps: a contrast of 3 to 1, and of 7 to 1.
constexpr double kFaint = 0.45;
constexpr double kFaintOfHighContrast = 0.65;

double Luminance(const QColor& colour) {
  const auto linear = [](double part) {
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
         0.0722 * linear(colour.blueF());
}

double Contrast(const QColor& a, const QColor& b) {
  const auto [darker, lighter] = std::minmax({Luminance(a), Luminance(b)});
  return (lighter + 0.05) / (darker + 0.05);
}

// The colour, drawn towards `goal` until it differs from `ground` by that contrast.
QColor Distinct(QColor colour, const QColor& ground, const QColor& goal, double contrast) {
  for (int i = 0; i < 20 && Contrast(colour, ground) < contrast; ++i) {
    colour = Mix(colour, goal, 0.1);
  }
  return colour;
}

QPalette DarkPalette() {
  const QColor window(0x2b, 0x2c, 0x2f);
  const QColor base(0x1f, 0x20, 0x22);
  const QColor text(0xee, 0xee, 0xee);
  const QColor faint(0x85, 0x86, 0x8a);
  const QColor accent(0x2f, 0x7d, 0xc8);
  QPalette palette(text, QColor(0x3a, 0x3b, 0x3f), QColor(0x50, 0x51, 0x55),
                   QColor(0x18, 0x18, 0x1a), QColor(0x60, 0x61, 0x65), text, Qt::white, base,
                   window);
  palette.setColor(QPalette::Highlight, accent);
  palette.setColor(QPalette::HighlightedText, Qt::white);
  palette.setColor(QPalette::PlaceholderText, faint);
  return palette;
}

// Text on its ground and nothing between, with the accent of the palette that it is made from.
QPalette HighContrastPalette(const QPalette& from, bool dark) {
  const QColor ground = dark ? Qt::black : Qt::white;
  const QColor text = dark ? Qt::white : Qt::black;
  QPalette palette(text, ground, text, text, text, text, text, ground, ground);
  palette.setColor(QPalette::Highlight, from.color(QPalette::Highlight));
  return palette;
}

bool IsDark(const QPalette& palette) { return palette.color(QPalette::Window).lightness() < 128; }

bool IsOfHighContrast(const QPalette& palette) {
  return Contrast(palette.color(QPalette::Active, QPalette::Window),
                  palette.color(QPalette::Active, QPalette::WindowText)) >= kBlackOnWhite;
}

// The accent as it can be seen on the window, under a text that can be read on it.
void SetAccent(QPalette& palette, const QColor& accent) {
  const QColor ground = palette.color(QPalette::Window);
  const double least = IsOfHighContrast(palette) ? kHighContrast : kLeastContrast;
  const QColor seen = Distinct(accent, ground, palette.color(QPalette::WindowText), least);
  const bool white = Contrast(seen, Qt::white) >= least;
  palette.setColor(QPalette::Highlight, seen);
  palette.setColor(QPalette::HighlightedText, white ? Qt::white : Qt::black);
}

}  // namespace

QColor Mix(const QColor& a, const QColor& b, double share_of_b) {
  const auto mix = [share_of_b](int x, int y) {
    return static_cast<int>(std::lround(x + (y - x) * share_of_b));
  };
  return {mix(a.red(), b.red()), mix(a.green(), b.green()), mix(a.blue(), b.blue())};
}

QColor BorderColour(const QPalette& palette, QPalette::ColorGroup group) {
  const QColor text = palette.color(group, QPalette::WindowText);
  const bool full = IsOfHighContrast(palette);
  return full ? text : Mix(palette.color(group, QPalette::Window), text, 0.45);
}

QPalette PaletteFor(const DesktopSettings& settings, const QPalette& of_qt) {
  const bool dark = settings.dark || IsDark(of_qt);
  QPalette palette = settings.dark && !IsDark(of_qt) ? DarkPalette() : of_qt;
  if (settings.high_contrast) palette = HighContrastPalette(palette, dark);
  if (settings.accent.isValid() || settings.high_contrast) {
    SetAccent(palette,
              settings.accent.isValid() ? settings.accent : palette.color(QPalette::Highlight));
  }
  const QColor text = palette.color(QPalette::Active, QPalette::WindowText);
  const QColor faint = Mix(palette.color(QPalette::Active, QPalette::Window), text,
                           IsOfHighContrast(palette) ? kFaintOfHighContrast : kFaint);
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    palette.setColor(QPalette::Disabled, role, faint);
  }
  palette.setColor(QPalette::ToolTipBase, palette.color(QPalette::Active, QPalette::Base));
  palette.setColor(QPalette::ToolTipText, palette.color(QPalette::Active, QPalette::Text));
  return palette;
}

}  // namespace desktop
