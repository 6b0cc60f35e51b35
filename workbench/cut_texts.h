#pragma once

#include <string>
#include <vector>

#include "platform/carbon/display.h"

namespace workbench {

// The texts of the dialog that do not fit on the screen, measured by the program that draws them;
// none if it cannot be asked.
std::vector<std::string> FindCutTexts(const display::Description& dialog);

}  // namespace workbench
