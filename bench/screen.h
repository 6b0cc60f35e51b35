#pragma once

// A screen of the measurement's own (Xvfb), watched from outside the programs that draw on it.

#include <xcb/damage.h>
#include <xcb/xcb.h>

#include <memory>
#include <optional>
#include <vector>

#include "bench/child.h"

namespace bench {

class Screen {
 public:
  // Starts Xvfb and makes DISPLAY name it.
  Screen();
  Screen(const Screen&) = delete;
  Screen& operator=(const Screen&) = delete;
  ~Screen();

  // Waits until a window that appears after the call is mapped and something is drawn in it: more
  // than one color. Returns the moment at which that was seen, nothing after ten seconds.
  std::optional<double> WaitForDrawnWindow();

  // Presses Return in the window that was last seen drawn.
  void PressReturn();

  // Waits until no window is mapped, so that the next measurement begins on an empty screen.
  void WaitUntilEmpty();

 private:
  struct Freeing {
    void operator()(void* memory) const;
  };
  using Event = std::unique_ptr<xcb_generic_event_t, Freeing>;

  Event NextEvent(double deadline);
  void Note(const xcb_generic_event_t& event);
  bool IsDrawn(xcb_window_t window) const;
  bool IsMapped(xcb_window_t window) const;
  bool IsEmpty() const;

  std::unique_ptr<Child> server_;
  xcb_connection_t* connection_ = nullptr;
  xcb_window_t root_ = 0;
  xcb_damage_damage_t damage_ = 0;
  std::uint8_t damage_event_ = 0;
  xcb_window_t mapped_ = 0;  // the window that was mapped last
};

}  // namespace bench
