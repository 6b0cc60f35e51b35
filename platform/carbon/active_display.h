#pragma once

#include "platform/carbon/display.h"

namespace carbon {

// The display on which dialogs are shown now.
display::Display& ActiveDisplay();

}  // namespace carbon
