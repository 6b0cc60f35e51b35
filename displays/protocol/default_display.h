#pragma once

// The programs that show dialogs. Unless a host chooses another display, the desktop's does if
// there is a screen, else the terminal's if there is one. They are never destroyed,
// since a display process ends when the host does, however it ends, and start nothing before they
// are needed.

#include "platform/carbon/display.h"

#pragma GCC visibility push(default)

namespace display {

Display& Desktop();
Display& Terminal();

}  // namespace display

#pragma GCC visibility pop
