#pragma once

#include <string>

#include "platform/carbon/display.h"

namespace display {

// What messages call a dialog: its caption, or else its message, on one line.
std::string NameOf(const Description& dialog);

// What recordings call a dialog: its caption and its message, on one line.
std::string FullNameOf(const Description& dialog);

}  // namespace display
