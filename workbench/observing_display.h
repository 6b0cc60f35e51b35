#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/carbon/display.h"
#include "workbench/failure.h"

namespace workbench {

// Stands in a recording for what was entered into a password field.
inline constexpr const char* kPasswordPlaceholder = "<password>";

// Is told of every dialog that opens and of everything that its user does. What it throws ends the
// dialog, as if its display were gone, and the program.
class Observer {
 public:
  virtual ~Observer() = default;

  virtual void Opened(const display::Description& dialog) = 0;

  // `secret`: the action holds what was entered into a password field.
  virtual void Acted(const display::Action& action, bool secret) = 0;
};

// Shows dialogs on another display, tells observers of them, and notes one that its user did not
// end.
class ObservingDisplay : public display::Display {
 public:
  // `shown_on` must outlive this display. `passwords` take the place of the placeholders, one after
  // the other; none if users enter theirs, whatever they are. A dialog whose user does nothing for
  // `patience` seconds is lost, unless that is 0.
  ObservingDisplay(display::Display& shown_on, std::vector<std::unique_ptr<Observer>> observers,
                   std::optional<std::vector<std::string>> passwords, double patience = 0);

  // A dialog that could not be opened, or whose display went away while it was open.
  struct Lost {
    std::string name;
    std::string reason;
    bool is_late = false;  // its user has done nothing for too long
  };

  // Each returns what happened since its last call: the dialog that was lost, and what an observer
  // threw.
  std::optional<Lost> TakeLost() { return std::exchange(lost_, std::nullopt); }
  std::optional<Failure> TakeFailure() { return std::exchange(failure_, std::nullopt); }

  // The last dialog that opened since the last call, as it opened.
  std::optional<display::Description> TakeShown() { return std::exchange(shown_, std::nullopt); }

  Rect MainScreen() override;
  bool Open(const display::Description& dialog) override;
  std::optional<display::Action> NextAction() override;
  void Change(std::size_t index, const display::Control& control) override;
  void Reject(const std::string& reason) override;
  void Close() override;

 private:
  template <class Report>
  bool Tell(Report report);
  bool IsSecret(const display::Action& action) const;
  bool FillInPassword(display::Action& action);

  display::Display& shown_on_;
  std::vector<std::unique_ptr<Observer>> observers_;
  std::optional<std::vector<std::string>> passwords_;
  std::size_t next_password_ = 0;
  double patience_;
  std::vector<display::Control> controls_;  // of the open dialog, as they now are
  std::string name_;                        // of the open dialog
  std::optional<display::Description> shown_;
  std::optional<Lost> lost_;
  std::optional<Failure> failure_;
};

}  // namespace workbench
