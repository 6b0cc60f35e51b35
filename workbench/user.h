#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "displays/scripted/scripted_display.h"
#include "workbench/observing_display.h"
#include "workbench/options.h"

namespace workbench {

// Who sees the dialogs and answers them: the user at the desktop or the terminal, or a script of
// answers. Dialogs are shown to the user for as long as this lives.
class User {
 public:
  // Reads the answers and opens the files that dialogs are written to. Throws Failure (usage).
  explicit User(const Options& options);
  User(const User&) = delete;
  User& operator=(const User&) = delete;
  ~User();

  // The screen that dialogs are shown on.
  Rect Screen() const { return display_->MainScreen(); }

  // Shows a message with up to three buttons, the default one first and what is empty left out, and
  // returns the number of the one that was pressed. Throws Failure if there is no answer.
  int ShowMessage(const std::string& title, const std::string& message,
                  const std::vector<std::string>& buttons);

  // The dialog that was shown since the last call, as it opened.
  std::optional<display::Description> TakeShown() { return display_->TakeShown(); }

  // Throws Failure, which says why, if a dialog since the last call was not ended by its user.
  void CheckDialogs();

  // Says on standard error which answers are left over, or throws Failure if that is strict.
  void CheckAnswers() const;

 private:
  bool strict_;
  bool is_scripted_;
  bool may_leave_;  // dialogs, without an answer
  int left_ = 0;    // so many
  display::ScriptedDisplay scripted_;
  mutable std::optional<ObservingDisplay> display_;
};

}  // namespace workbench
