#include "displays/scripted/scripted_display.h"

#include <utility>

#include "displays/scripted/dialog_name.h"
#include "displays/scripted/names.h"

namespace display {
namespace {

std::string PlaceOf(const std::string& source, int line) {
  return source + ", line " + std::to_string(line) + ": ";
}

}  // namespace

ScriptedDisplay::ScriptedDisplay(std::vector<Answer> answers, bool strict)
    : answers_(std::move(answers)), strict_(strict) {}

std::string ScriptedDisplay::LeftOver() const {
  if (next_ == answers_.size()) return "";
  const std::size_t count = answers_.size() - next_;
  const Answer& first = answers_[next_];
  return PlaceOf(first.source, first.line) +
         (count == 1
              ? "an answer is left over, \"" + first.text + "\""
              : std::to_string(count) + " answers are left over, from \"" + first.text + "\" on");
}

Rect ScriptedDisplay::MainScreen() { return {0, 0, 1080, 1920}; }

bool ScriptedDisplay::Open(const Description& dialog) {
  dialog_ = dialog;
  caption_ = NameOf(dialog);
  if (next_ < answers_.size() && answers_[next_].dialog_line > 0) Compare(FullNameOf(dialog));
  return true;
}

// The dialog that opens with the one that the next answer was recorded for.
void ScriptedDisplay::Compare(const std::string& name) {
  const Answer& answer = answers_[next_];
  const bool belongs_to_last = next_ > 0 && answers_[next_ - 1].dialog_line == answer.dialog_line &&
                               answers_[next_ - 1].source == answer.source;
  if (answer.dialog == name && !belongs_to_last) return;
  const std::string what = "\"" + answer.text + "\" was recorded for " +
                           (belongs_to_last ? "the dialog before, \"" : "the dialog \"") +
                           answer.dialog + "\", not for \"" + name + "\"";
  if (!strict_) return notes_.push_back(PlaceOf(answer.source, answer.line) + what);
  failure_ = {caption_, answer.source, answer.line, what};
}

std::optional<Action> ScriptedDisplay::NextAction() {
  if (failure_) return std::nullopt;
  if (next_ == answers_.size()) {
    Fail("there is no answer left");
    failure_->is_missing = true;
    return std::nullopt;
  }
  try {
    return ActionOf(answers_[next_++], dialog_);
  } catch (const NameError& error) {
    Reject(error.what());
    return std::nullopt;
  }
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
