#pragma once

#include <xcb/xcb.h>

#include <memory>
#include <string>

namespace desktop {

// Finds out whether there is a screen before Qt is started, which would abort without one, and
// settles QT_QPA_PLATFORM where only one of X11 and Wayland answers. Keep it until Qt is connected:
// an X server starts anew when its last client goes, and takes no other one meanwhile.
class ScreenProbe {
 public:
  ScreenProbe();

  // Why there is no screen, as one line for the user; empty where there is one.
  const std::string& WhyNone() const { return why_none_; }

 private:
  struct Disconnecting {
    void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
  };

  bool XServerAnswers();

  std::unique_ptr<xcb_connection_t, Disconnecting> connection_;
  std::string why_none_;
};

}  // namespace desktop
