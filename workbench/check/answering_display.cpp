#include "workbench/check/answering_display.h"

#include <algorithm>

namespace workbench::check {
namespace {

using display::Action;

Action Press(int button) { return {Action::Kind::kPress, button, 0, 0, {}}; }

std::vector<Action> AnswersOf(const display::Alert& alert) {
  if (alert.default_button) return {Press(1)};
  return {Press(alert.cancel_button ? 2 : 3)};
}

std::vector<Action> AnswersOf(const display::Window& window) {
  std::vector<Action> answers{Press(1)};
  const bool has_list = std::any_of(
      window.controls.begin(), window.controls.end(),
      [](const display::Control& control) { return control.kind == display::ControlKind::kList; });
  if (has_list) answers.push_back({Action::Kind::kRow, 1, 0, display::kRowMiddle, {}});
  return answers;
}

}  // namespace

Rect AnsweringDisplay::MainScreen() { return {0, 0, 1080, 1920}; }

bool AnsweringDisplay::Open(const display::Description& dialog) {
  ++opened_;
  answers_ = std::visit([](const auto& kind) { return AnswersOf(kind); }, dialog);
  return true;
}

std::optional<Action> AnsweringDisplay::NextAction() {
  if (answers_.empty()) {
    ++unanswered_;
    return std::nullopt;
  }
  const Action answer = answers_.back();
  answers_.pop_back();
  return answer;
}

void AnsweringDisplay::Change(std::size_t /*index*/, const display::Control& /*control*/) {}

void AnsweringDisplay::Reject(const std::string& /*reason*/) {}

void AnsweringDisplay::Close() {}

}  // namespace workbench::check
