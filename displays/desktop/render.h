#pragma once

#include <QPixmap>
#include <QStringList>
#include <string>

#include "platform/carbon/display.h"

namespace desktop {

// Draws the dialog whose description is the line on standard input, as its window shows it, into a
// PNG file. Returns an empty text, or what went wrong as one line.
std::string RenderDialog(const std::string& file);

// Writes which of that dialog's texts are shown cut short, each whole, as a JSON array into a file.
// Returns likewise.
std::string WriteCutTexts(const std::string& file);

struct Picture {
  QPixmap pixels;  // as many as the screen has for each of Qt's
  QStringList cut_texts;
};

// Draws a dialog that is never on the screen.
Picture DrawDialog(const display::Description& dialog);

}  // namespace desktop
