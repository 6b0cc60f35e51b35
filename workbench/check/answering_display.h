#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "platform/carbon/display.h"

namespace workbench::check {

// Answers every dialog alike: the first row if it has a list, then button 1, or the first that an
// alert has.
class AnsweringDisplay : public display::Display {
 public:
  // How many dialogs were shown, and how many of these the actions did not end.
  int opened() const { return opened_; }
  int unanswered() const { return unanswered_; }

  Rect MainScreen() override;
  bool Open(const display::Description& dialog) override;
  std::optional<display::Action> NextAction() override;
  void Change(std::size_t index, const display::Control& control) override;
  void Reject(const std::string& reason) override;
  void Close() override;

 private:
  std::vector<display::Action> actions_;  // of the dialog that is open, the last first
  int opened_ = 0;
  int unanswered_ = 0;
};

}  // namespace workbench::check
