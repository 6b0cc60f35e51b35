#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <memory>
#include <stdexcept>

#include "displays/protocol/display_process.h"
#include "tests/desktop/example_dialogs.h"
#include "tests/desktop/x_session.h"

namespace desktop_test {

// A screen with a user in front of it and a display that shows dialogs on it.
class UserTest : public testing::Test {
 protected:
  explicit UserTest(XSession::Manager manager = XSession::Manager::kNone) : user_(manager) {
    alarm(50);  // an action that never comes ends the test instead of holding it up
  }
  ~UserTest() override { alarm(0); }

  // Opens the dialog and waits until it is painted and has the keyboard; throws if that does not
  // happen.
  xcb_window_t Open(const display::Description& dialog) {
    const auto* window = std::get_if<display::Window>(&dialog);
    if (!display_.Open(dialog)) throw std::runtime_error("the dialog does not open");
    const xcb_window_t shown =
        user_.ActiveWindow(window && !window->title.empty() ? window->title : " ");
    if (shown == 0) throw std::runtime_error("the dialog's window does not get the keyboard");
    if (window && !WaitFor([&] { return IsPainted(*window); })) {
      throw std::runtime_error("the dialog's window is not painted");
    }
    return shown;
  }

  // The screen behind is black, the window's background is not.
  bool IsPainted(const display::Window& window) const {
    return user_.PixelAt(window.content.left + 1, window.content.top + 1) != 0;
  }

  std::string Next() { return Said(display_.NextAction()); }

  // Does what is described and returns what is reported for it.
  std::string AfterKey(const std::string& keys) {
    user_.Key(keys);
    return Next();
  }
  std::string AfterClick(int x, int y, const std::string& held = "") {
    user_.Click(kLeft + x, kTop + y, held);
    return Next();
  }

  XSession user_;
  display::DisplayProcess display_{"tarvo-desktop"};
};

}  // namespace desktop_test
