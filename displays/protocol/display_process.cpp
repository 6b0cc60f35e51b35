#include "displays/protocol/display_process.h"

#include <exception>
#include <utility>
#include <variant>

namespace display {
namespace {

constexpr Rect kNoScreen{0, 0, 1080, 1920};

}  // namespace

DisplayProcess::DisplayProcess(std::string program, std::chrono::milliseconds patience)
    : program_(std::move(program)), patience_(patience) {}

Rect DisplayProcess::MainScreen() { return GetReady() ? ready_.main_screen : kNoScreen; }

bool DisplayProcess::Open(const Description& dialog) {
  ++dialog_;
  return GetReady() && Send(protocol::OpenLine(dialog_, dialog));
}

std::optional<Action> DisplayProcess::NextAction() {
  while (const auto message = Receive()) {
    if (const auto* done = std::get_if<protocol::Done>(&*message)) {
      if (done->dialog == dialog_) return done->action;
    } else if (!NoteReady(*message)) {
      program_.Stop();
    }
  }
  return std::nullopt;
}

void DisplayProcess::Change(std::size_t index, const Control& control) {
  Send(protocol::ChangeLine(dialog_, index, control));
}

// A window reports only actions that its dialog allows, so there is no mistake to report back.
void DisplayProcess::Reject(const std::string&) {}

// What the host writes next is to be seen on a terminal that is as it was.
void DisplayProcess::Close() {
  if (!Send(protocol::CloseLine(dialog_)) || !ready_.tells_closed) return;
  while (const auto message = Receive()) {
    if (const auto* closed = std::get_if<protocol::Closed>(&*message)) {
      if (closed->dialog == dialog_) return;
    }
  }
}

bool DisplayProcess::GetReady() {
  TakeNews();
  if (program_.IsRunning()) return true;
  why_lost_ = program_.Start();
  if (!why_lost_.empty()) return false;
  why_lost_ = program_.name() + " or its screen has ended";  // unless the program says otherwise
  if (IsReady()) return true;
  program_.Stop();
  return false;
}

bool DisplayProcess::IsReady() {
  if (!program_.HasLine(patience_)) {
    if (program_.IsRunning()) why_lost_ = program_.name() + " does not get ready";
    return false;
  }
  const auto message = Receive();
  return message && NoteReady(*message);
}

bool DisplayProcess::NoteReady(const protocol::DisplayMessage& message) {
  if (const auto* ready = std::get_if<protocol::Ready>(&message)) ready_ = *ready;
  if (const auto* not_ready = std::get_if<protocol::NotReady>(&message)) why_lost_ = not_ready->why;
  return std::holds_alternative<protocol::Ready>(message);
}

// Between dialogs the program may have gone, or the screen may have changed; late actions of the
// dialog before are dropped.
void DisplayProcess::TakeNews() {
  while (program_.HasLine(std::chrono::milliseconds(0))) {
    const auto message = Receive();
    if (message) NoteReady(*message);
  }
}

// The next message. Nothing if the program is gone, or is stopped because its line is no message.
std::optional<protocol::DisplayMessage> DisplayProcess::Receive() {
  const std::optional<std::string> line = program_.ReadLine();
  if (!line) return std::nullopt;
  try {
    return protocol::ReadDisplayMessage(*line);
  } catch (const std::exception&) {
    program_.Stop();
    return std::nullopt;
  }
}

bool DisplayProcess::Send(const std::string& line) { return program_.Write(line); }

}  // namespace display
