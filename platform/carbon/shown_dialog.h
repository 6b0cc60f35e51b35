#pragma once

#include "platform/carbon/display.h"

namespace carbon {

// Ends the display's dialog however the loop is left.
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
