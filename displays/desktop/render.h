#pragma once

#include <string>

namespace desktop {

// Draws the dialog whose description is the line on standard input, as its window shows it, into a
// PNG file. Returns an empty text, or what went wrong as one line.
std::string RenderDialog(const std::string& file);

}  // namespace desktop
