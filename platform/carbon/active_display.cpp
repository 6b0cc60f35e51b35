#include "platform/carbon/active_display.h"

#include "platform/carbon/CarbonHost.h"
#include "platform/carbon/objects.h"

namespace carbon {
namespace {

display::Display* chosen_display = nullptr;

}  // namespace

display::Display& ActiveDisplay() {
  return chosen_display != nullptr ? *chosen_display : DefaultDisplay();
}

void SetDisplay(display::Display* display) { chosen_display = display; }

long LiveObjects() {
  const Objects& all = All();
  return static_cast<long>(all.windows.Size() + all.controls.Size() + all.menus.Size() +
                           all.lists.Size() + all.handlers.Size() + all.events.Size() +
                           all.alerts.Size());
}

}  // namespace carbon
