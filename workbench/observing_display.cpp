#include "workbench/observing_display.h"

#include <algorithm>
#include <utility>
#include <variant>

#include "displays/scripted/dialog_name.h"
#include "platform/carbon/control_ids.h"
#include "workbench/interruption.h"

namespace workbench {

using display::Action;
using display::Control;
using display::ControlKind;

namespace {

// FileMaker breaks lines with a carriage return alone.
void BreakLines(std::string& text) {
  for (std::size_t i = 0; (i = text.find("\r\n", i)) != std::string::npos;) text.erase(i + 1, 1);
  std::replace(text.begin(), text.end(), '\n', '\r');
}

}  // namespace

ObservingDisplay::ObservingDisplay(display::Display& shown_on,
                                   std::vector<std::unique_ptr<Observer>> observers,
                                   std::optional<std::vector<std::string>> passwords,
                                   double patience)
    : shown_on_(shown_on),
      observers_(std::move(observers)),
      passwords_(std::move(passwords)),
      patience_(patience) {}

Rect ObservingDisplay::MainScreen() { return shown_on_.MainScreen(); }

bool ObservingDisplay::Open(const display::Description& dialog) {
  name_ = display::NameOf(dialog);
  if (!shown_on_.Open(dialog)) {
    lost_ = Lost{name_, shown_on_.WhyLost()};
    return false;
  }
  shown_ = dialog;
  const auto* window = std::get_if<display::Window>(&dialog);
  controls_ = window ? window->controls : std::vector<Control>();
  if (Tell([&](Observer& observer) { observer.Opened(dialog); })) return true;
  shown_on_.Close();
  return false;
}

std::optional<Action> ObservingDisplay::NextAction() {
  if (patience_ > 0) LimitWaiting(patience_);
  std::optional<Action> action = shown_on_.NextAction();
  const bool is_late = !action && TakeTimeout();
  if (patience_ > 0) LimitWaiting(0);
  if (!action) {
    lost_ = Lost{name_, shown_on_.WhyLost(), is_late};
    return std::nullopt;
  }
  BreakLines(action->text);
  const bool secret = IsSecret(*action);
  if (secret && !FillInPassword(*action)) return std::nullopt;
  if (!Tell([&](Observer& observer) { observer.Acted(*action, secret); })) return std::nullopt;
  return action;
}

void ObservingDisplay::Change(std::size_t index, const Control& control) {
  controls_.at(index) = control;
  shown_on_.Change(index, control);
}

void ObservingDisplay::Reject(const std::string& reason) { shown_on_.Reject(reason); }

void ObservingDisplay::Close() { shown_on_.Close(); }

// False if an observer failed. Its exception does not pass through the modal loop, so that the
// plug-in ends its dialog as it does when a display is gone.
template <class Report>
bool ObservingDisplay::Tell(Report report) {
  try {
    for (const auto& observer : observers_) report(*observer);
    return true;
  } catch (const Failure& failure) {
    if (!failure_) failure_ = failure;
    return false;
  }
}

bool ObservingDisplay::IsSecret(const Action& action) const {
  return std::any_of(controls_.begin(), controls_.end(), [&](const Control& control) {
    if (control.kind != ControlKind::kPassword) return false;
    return (action.kind == Action::Kind::kEnter && control_id::IsNumber(action.number) &&
            control.id == control_id::Field(action.number)) ||
           (action.kind == Action::Kind::kType && control.focused);
  });
}

// False, which is told, if there is no password for the placeholder.
bool ObservingDisplay::FillInPassword(Action& action) {
  if (!passwords_ || action.text != kPasswordPlaceholder) return true;
  if (next_password_ == passwords_->size()) {
    shown_on_.Reject(
        "the recording does not hold this password; --passwords or TARVO_PASSWORDS "
        "supplies it");
    return false;
  }
  action.text = (*passwords_)[next_password_++];
  return true;
}

}  // namespace workbench
