#pragma once

#include <string>

namespace terminal {

// Draws the dialog whose description is the line on standard input, as a terminal of 80 by 24 cells
// shows it, as text into a file. Returns an empty text, or what went wrong as one line.
std::string RenderDialog(const std::string& file);

}  // namespace terminal
