#include "platform/carbon/active_display.h"

#include "platform/carbon/CarbonHost.h"
#include "platform/carbon/desktop_display.h"
#include "platform/carbon/objects.h"

namespace carbon {
namespace {

display::Display* chosen_display = nullptr;

}  // namespace

display::Display& ActiveDisplay() {
  return chosen_display != nullptr ? *chosen_display : *DesktopDisplay();
}

void SetDisplay(display::Display* display) { chosen_display = display; }

// Never destroyed: the display process ends when the host does, however it ends.
display::Display* DesktopDisplay() {
  static auto* display = new display::DesktopDisplay;
  return display;
}

long LiveObjects() {
  const Objects& all = All();
  return static_cast<long>(all.windows.Size() + all.controls.Size() + all.menus.Size() +
                           all.lists.Size() + all.handlers.Size() + all.events.Size() +
                           all.alerts.Size());
}

}  // namespace carbon
