#pragma once

#include <string>

#include "platform/carbon/display.h"

namespace display {

// What messages call a dialog: its caption, or else its message, on one line.
std::string NameOf(const Description& dialog);

// What recordings call a dialog: its caption and its message, on one line.
std::string FullNameOf(const Description& dialog);

// The text with a blank in place of each line end.
std::string OnOneLine(std::string text);

}  // namespace display
