#pragma once

#include <xcb/xcb.h>

#include <memory>
#include <string>

namespace desktop {

// Finds out whether there is a screen before Qt is started, which would abort without one, and
// sets QT_QPA_PLATFORM if only one of X11 and Wayland answers. Keep it until Qt is connected:
// an X server resets itself when its last client goes, and accepts no other meanwhile.
class ScreenProbe {
 public:
  ScreenProbe();

  // Why there is no screen, as one line for the user; empty if there is one.
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
