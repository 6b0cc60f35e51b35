#pragma once

// What a host and its tests need of Carbon besides the plug-in's operations.

#include "platform/carbon/display.h"

#pragma GCC visibility push(default)

namespace carbon {

// Dialogs are shown on this display from now on; it must outlive them. Null: on the desktop again,
// which is where they are shown unless a host says otherwise.
void SetDisplay(display::Display* display);

// The display process on the desktop, started when it is first needed. Never null.
display::Display* DesktopDisplay();

// Windows, controls, menus, handlers, events and alerts that are alive. Leak tests compare it.
long LiveObjects();

}  // namespace carbon

#pragma GCC visibility pop
