#include "displays/protocol/display_process.h"
#include "platform/carbon/CarbonHost.h"
#include "platform/carbon/display.h"

// The project's display, which is installed beside this library. Never destroyed: the display
// process ends when the host does, however it ends.
display::Display& carbon::DefaultDisplay() {
  static auto& display = *new display::DisplayProcess("tarvo-desktop");
  return display;
}
