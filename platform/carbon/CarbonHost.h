#pragma once

// What a host and its tests need of Carbon besides the plug-in's operations.

#include "platform/carbon/display.h"

#pragma GCC visibility push(default)

namespace carbon {

// From now on dialogs are shown on this display, which must outlive them; on the default one again
// if it is null.
void SetDisplay(display::Display* display);

// The display that is used unless a host chooses another. Carbon knows none: the displays define
// this, and whoever builds Carbon links theirs into it. It lives as long as the process and starts
// nothing before it is needed.
display::Display& DefaultDisplay();

// Windows, controls, menus, handlers, events and alerts that are alive. Leak tests compare it.
long LiveObjects();

}  // namespace carbon

#pragma GCC visibility pop
