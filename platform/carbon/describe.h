#pragma once

#include "platform/carbon/Carbon.h"
#include "platform/carbon/display.h"
#include "platform/carbon/objects.h"

namespace carbon {

// A window with its controls, and one control, as a display is told of them.
display::Window Describe(Window& window);
display::Control Describe(const Window& window, ControlRef reference, const Control& control);

}  // namespace carbon
