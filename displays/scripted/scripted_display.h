#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "displays/scripted/answers.h"
#include "platform/carbon/display.h"

namespace display {

// Answers dialogs from a script, one list of answers for all dialogs, on a screen of 1920 by 1080
// pixels that nobody sees.
class ScriptedDisplay : public Display {
 public:
  // An answer that was missing, or that named what its dialog does not have.
  struct Failure {
    std::string caption;  // of the dialog, or its message if it has none
    std::string source;   // of the answer; if one is missing, of the last one, if there was any
    int line = 0;
    std::string reason;  // one clause
    bool is_missing = false;
  };

  // `strict`: a dialog other than the one that its answers were recorded for is a failure.
  explicit ScriptedDisplay(std::vector<Answer> answers, bool strict = false);

  // The first failure, if there was one. Until it is taken, no dialog gets an action.
  const std::optional<Failure>& failure() const { return failure_; }
  std::optional<Failure> TakeFailure() { return std::exchange(failure_, std::nullopt); }

  // What was noticed since the last call, each on one line: a dialog other than the recorded one.
  std::vector<std::string> TakeNotes() { return std::exchange(notes_, {}); }

  // Which answers no dialog has asked for, as one clause with their place; empty if there are none.
  std::string LeftOver() const;

  Rect MainScreen() override;
  bool Open(const Description& dialog) override;
  std::optional<Action> NextAction() override;
  void Change(std::size_t index, const Control& control) override;
  void Reject(const std::string& reason) override;
  void Close() override;

 private:
  void Compare(const std::string& name);
  void Fail(const std::string& reason);

  std::vector<Answer> answers_;
  bool strict_;
  std::size_t next_ = 0;
  std::string caption_;
  Description dialog_;
  std::vector<std::string> notes_;
  std::optional<Failure> failure_;
};

}  // namespace display
