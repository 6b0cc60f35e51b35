#include "displays/desktop/window_pool.h"

#include <variant>

namespace desktop {

ModalWindow& WindowPool::Fill(const display::Description& description) {
  turn_ = 1 - turn_;
  if (const auto* window = std::get_if<display::Window>(&description)) {
    dialogs_[turn_].Fill(*window);
    return dialogs_[turn_];
  }
  alerts_[turn_].Fill(std::get<display::Alert>(description));
  return alerts_[turn_];
}

}  // namespace desktop
