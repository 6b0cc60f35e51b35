#include "displays/protocol/desktop_or_terminal.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace display {
namespace {

bool IsSet(const char* variable) {
  const char* value = std::getenv(variable);
  return value && *value != '\0';
}

bool IsScreenNamed() {
  return IsSet("DISPLAY") || IsSet("WAYLAND_DISPLAY") || IsSet("QT_QPA_PLATFORM");
}

}  // namespace

DesktopOrTerminal::DesktopOrTerminal(DisplayProcess& desktop, DisplayProcess& terminal)
    : desktop_(desktop), terminal_(terminal), chosen_(&desktop) {}

// The one that showed the dialog before is not left while it runs. If no screen is named, the
// desktop's toolkit need not be loaded to find that out: the terminal comes first.
bool DesktopOrTerminal::Choose() {
  if (chosen_->IsRunning() && chosen_->GetReady()) return is_ready_ = true;
  std::array in_turn{&desktop_, &terminal_};
  if (!IsScreenNamed()) std::reverse(in_turn.begin(), in_turn.end());
  for (DisplayProcess* program : in_turn) {
    if (!program->GetReady()) continue;
    chosen_ = program;
    return is_ready_ = true;
  }
  return is_ready_ = false;
}

Rect DesktopOrTerminal::MainScreen() {
  Choose();
  return chosen_->MainScreen();
}

bool DesktopOrTerminal::Open(const Description& dialog) {
  return Choose() && chosen_->Open(dialog);
}

std::optional<Action> DesktopOrTerminal::NextAction() { return chosen_->NextAction(); }

void DesktopOrTerminal::Change(std::size_t index, const Control& control) {
  chosen_->Change(index, control);
}

void DesktopOrTerminal::Reject(const std::string& reason) { chosen_->Reject(reason); }

void DesktopOrTerminal::StopWaitingWhenReadable(int descriptor) {
  desktop_.StopWaitingWhenReadable(descriptor);
  terminal_.StopWaitingWhenReadable(descriptor);
}

void DesktopOrTerminal::Close() { chosen_->Close(); }

std::string DesktopOrTerminal::WhyLost() const {
  return is_ready_ ? chosen_->WhyLost() : desktop_.WhyLost() + ", and " + terminal_.WhyLost();
}

}  // namespace display
