#pragma once

#include <memory>
#include <optional>

#include "displays/scripted/scripted_display.h"
#include "workbench/observing_display.h"
#include "workbench/options.h"

namespace workbench {

// Who sees the dialogs and answers them: the user at the desktop or a script of answers. Dialogs
// are shown to the user for as long as this lives.
class User {
 public:
  // Reads the answers and opens the files that dialogs are written to. Throws Failure (usage).
  explicit User(const Options& options);
  User(const User&) = delete;
  User& operator=(const User&) = delete;
  ~User();

  // Throws Failure, which says why, if a dialog since the last call was not ended by its user.
  void CheckDialogs();

 private:
  std::optional<display::ScriptedDisplay> scripted_;
  std::optional<ObservingDisplay> display_;
};

}  // namespace workbench
