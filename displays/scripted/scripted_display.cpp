#include "displays/scripted/scripted_display.h"

#include <utility>

#include "displays/scripted/dialog_name.h"

namespace display {
ScriptedDisplay::ScriptedDisplay(std::vector<Answer> answers) : answers_(std::move(answers)) {}

Rect ScriptedDisplay::MainScreen() { return {0, 0, 1080, 1920}; }

bool ScriptedDisplay::Open(const Description& dialog) {
  caption_ = NameOf(dialog);
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
  failure_ = {caption_, "", 0, reason};
  if (next_ == 0) return;
  failure_->source = answers_[next_ - 1].source;
  failure_->line = answers_[next_ - 1].line;
}

}  // namespace display
