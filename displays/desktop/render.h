#pragma once

#include <string>

namespace desktop {

// Draws the dialog whose description is the line on standard input, as its window shows it, into a
// PNG file. Returns an empty text, or what went wrong as one line.
std::string RenderDialog(const std::string& file);

// Writes which of that dialog's texts are shown cut short, each whole, as a JSON array into a file.
// Returns likewise.
std::string WriteCutTexts(const std::string& file);

}  // namespace desktop
