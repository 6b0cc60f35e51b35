#pragma once

#include <string>

#include "displays/protocol/display_process.h"
#include "platform/carbon/display.h"

namespace display {

// Dialogs are shown on the desktop if there is a screen, else in the terminal if there is
// one.
class DesktopOrTerminal : public Display {
 public:
  // Both must outlive this.
  DesktopOrTerminal(DisplayProcess& desktop, DisplayProcess& terminal);

  Rect MainScreen() override;
  bool Open(const Description& dialog) override;
  std::optional<Action> NextAction() override;
  void Change(std::size_t index, const Control& control) override;
  void Reject(const std::string& reason) override;
  void Close() override;
  void StopWaitingWhenReadable(int descriptor) override;
  std::string WhyLost() const override;

 private:
  bool Choose();

  DisplayProcess& desktop_;
  DisplayProcess& terminal_;
  DisplayProcess* chosen_;  // the one that got ready last
  bool is_ready_ = false;
};

}  // namespace display
