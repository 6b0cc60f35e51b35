#pragma once

#include "platform/carbon/display.h"

namespace carbon {

// A dialog on a display. It is closed however the loop that shows it is left.
class ShownDialog {
 public:
  ShownDialog(display::Display& display, const display::Description& dialog)
      : display_(display), shown_(display.Open(dialog)) {}
  ShownDialog(const ShownDialog&) = delete;
  ShownDialog& operator=(const ShownDialog&) = delete;
  ~ShownDialog() {
    if (shown_) display_.Close();
  }

  bool IsShown() const { return shown_; }

 private:
  display::Display& display_;
  bool shown_;
};

}  // namespace carbon
