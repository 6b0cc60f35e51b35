#include "workbench/check/answering_display.h"

#include <algorithm>
#include <variant>

namespace workbench::check {
namespace {

using display::Action;

Action Press(int button) { return {Action::Kind::kPress, button, 0, 0, {}}; }

std::vector<Action> ActionsFor(const display::Alert& alert) {
  if (alert.default_button) return {Press(1)};
  return {Press(alert.cancel_button ? 2 : 3)};
}

std::vector<Action> ActionsFor(const display::Window& window) {
  std::vector<Action> actions{Press(1)};
  const bool has_list = std::any_of(
      window.controls.begin(), window.controls.end(),
      [](const display::Control& control) { return control.kind == display::ControlKind::kList; });
  if (has_list) actions.push_back({Action::Kind::kRow, 1, 0, display::kRowMiddle, {}});
  return actions;
}

}  // namespace

Rect AnsweringDisplay::MainScreen() { return {0, 0, 1080, 1920}; }

bool AnsweringDisplay::Open(const display::Description& dialog) {
  ++opened_;
  actions_ = std::visit([](const auto& kind) { return ActionsFor(kind); }, dialog);
  return true;
}

std::optional<Action> AnsweringDisplay::NextAction() {
  if (actions_.empty()) {
    ++unanswered_;
    return std::nullopt;
  }
  const Action action = actions_.back();
  actions_.pop_back();
  return action;
}

void AnsweringDisplay::Change(std::size_t /*index*/, const display::Control& /*control*/) {}

void AnsweringDisplay::Reject(const std::string& /*reason*/) {}

void AnsweringDisplay::Close() {}

}  // namespace workbench::check
