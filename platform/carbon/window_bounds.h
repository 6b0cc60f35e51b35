#pragma once

#include "platform/carbon/geometry.h"
#include "platform/carbon/objects.h"

namespace carbon {

// The content of a window in global coordinates. A window that is to be centred is centred now, on
// the display's main screen.
Rect ContentBounds(Window& window);

// Moves the content's top-left corner to a global point.
void MoveContent(Window& window, int left, int top);

}  // namespace carbon
