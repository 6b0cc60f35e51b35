#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "displays/scripted/answers.h"
#include "platform/carbon/display.h"

namespace display {

// Answers dialogs from a list of answers, one list for all dialogs, on a screen of 1920 by 1080
// pixels that nobody sees. Answers that are left over are no error.
class ScriptedDisplay : public Display {
 public:
  // An answer that was missing, or that named what its dialog does not have.
  struct Failure {
    std::string caption;  // of the dialog; an alert's message
    int line = 0;         // of the answer; where one is missing, of the last
    std::string reason;   // one clause
  };

  explicit ScriptedDisplay(std::vector<Answer> answers);

  // The first failure, if there was one. Every dialog ends without an answer from then on.
  const std::optional<Failure>& failure() const { return failure_; }

  Rect MainScreen() override;
  bool Open(const Description& dialog) override;
  std::optional<Action> NextAction() override;
  void Change(std::size_t index, const Control& control) override;
  void Reject(const std::string& reason) override;
  void Close() override;

 private:
  void Fail(const std::string& reason);

  std::vector<Answer> answers_;
  std::size_t next_ = 0;
  std::string caption_;
  std::optional<Failure> failure_;
};

}  // namespace display
