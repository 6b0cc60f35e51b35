#pragma once

#include <array>
#include <cstddef>

#include "displays/desktop/alert_window.h"
#include "displays/desktop/dialog_window.h"
#include "displays/desktop/modal_window.h"
#include "platform/carbon/display.h"

namespace desktop {

// The program's windows: two for dialogs and two for alerts. Those of a kind take turns, so that a
// key that was on its way to one dialog does nothing in the next, and a window manager has finished
// hiding a window before it is placed again.
class WindowPool {
 public:
  // A window filled with the dialog, to present and to dismiss. The pool keeps it.
  ModalWindow& Fill(const display::Description& description);

 private:
  std::array<DialogWindow, 2> dialogs_;
  std::array<AlertWindow, 2> alerts_;
  std::size_t turn_ = 0;
};

}  // namespace desktop
