#include "displays/scripted/scripted_display.h"

#include <utility>

namespace display {
namespace {

std::string CaptionOf(const Description& dialog) {
  if (const auto* window = std::get_if<Window>(&dialog)) return window->title;
  return std::get<Alert>(dialog).message;
}

}  // namespace

ScriptedDisplay::ScriptedDisplay(std::vector<Answer> answers) : answers_(std::move(answers)) {}

Rect ScriptedDisplay::MainScreen() { return {0, 0, 1080, 1920}; }

bool ScriptedDisplay::Open(const Description& dialog) {
  caption_ = CaptionOf(dialog);
  return true;
}

std::optional<Action> ScriptedDisplay::NextAction() {
  if (failure_) return std::nullopt;
  if (next_ == answers_.size()) {
    Fail("there is no answer left");
    return std::nullopt;
  }
  return answers_[next_++].action;
}

void ScriptedDisplay::Change(std::size_t /*index*/, const Control& /*control*/) {}

void ScriptedDisplay::Reject(const std::string& reason) {
  Fail("\"" + answers_[next_ - 1].text + "\": " + reason);
}

void ScriptedDisplay::Close() {}

void ScriptedDisplay::Fail(const std::string& reason) {
  failure_ = {caption_, next_ == 0 ? 0 : answers_[next_ - 1].line, reason};
}

}  // namespace display
