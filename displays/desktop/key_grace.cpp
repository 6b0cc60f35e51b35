#include "displays/desktop/key_grace.h"

#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <string>

#include "displays/desktop/environment.h"
#include "displays/desktop/x_server.h"

namespace desktop {
namespace {

constexpr const char* kVariable = "TARVO_KEY_GRACE";
constexpr int kUsualLength = 400;  // milliseconds

QElapsedTimer last_answer;

pid_t ParentOf(pid_t process) {
  std::ifstream status("/proc/" + std::to_string(process) + "/status");
  for (std::string line; std::getline(status, line);) {
    if (line.starts_with("PPid:")) return std::atoi(line.c_str() + sizeof "PPid:");
  }
  return 0;
}

// Whether this is the host or, as a terminal is, one of the processes that it was started by; or
// this process, whose last window a window manager may still hold for the active one.
bool IsHost(pid_t process) {
  if (process <= 1) return false;
  pid_t ancestor = getpid();
  while (ancestor > 1 && ancestor != process) ancestor = ParentOf(ancestor);
  return ancestor == process;
}

// The window that has the keyboard, by the window manager or else by the server; 0 if there is
// none.
xcb_window_t FocusedWindow() {
  const xcb_window_t root = XRoot();
  if (XProperty(root, "_NET_SUPPORTING_WM_CHECK") != 0) {
    return XProperty(root, "_NET_ACTIVE_WINDOW");
  }
  const XReply<xcb_get_input_focus_reply_t> reply(
      xcb_get_input_focus_reply(XServer(), xcb_get_input_focus(XServer()), nullptr));
  const bool window = reply && reply->focus > XCB_INPUT_FOCUS_POINTER_ROOT && reply->focus != root;
  return window ? reply->focus : 0;
}

// Wayland tells nobody.
bool AnotherProgramMayHaveKeyboard() {
  if (!XServer()) return true;
  const xcb_window_t focused = FocusedWindow();
  return focused != 0 && !IsHost(static_cast<pid_t>(XProperty(focused, "_NET_WM_PID")));
}

}  // namespace

void KeyGrace::Begin() {
  const bool answered_now = last_answer.isValid() && !last_answer.hasExpired(Length());
  if (Length() > 0 && !answered_now && AnotherProgramMayHaveKeyboard()) since_.start();
}

void KeyGrace::NoteActive() {
  if (since_.isValid() && !active_) since_.restart();
  active_ = true;
}

void KeyGrace::NoteAnswer() { last_answer.start(); }

int KeyGrace::Length() {
  static const std::string set = Environment(kVariable);
  return set.empty() ? kUsualLength : std::atoi(set.c_str());
}

}  // namespace desktop
