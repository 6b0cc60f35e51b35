#include "platform/carbon/active_display.h"

#include "platform/carbon/CarbonHost.h"

namespace carbon {
namespace {

display::Display* chosen_display = nullptr;

}  // namespace

display::Display& ActiveDisplay() {
  return chosen_display != nullptr ? *chosen_display : DefaultDisplay();
}

void SetDisplay(display::Display* display) { chosen_display = display; }

}  // namespace carbon
