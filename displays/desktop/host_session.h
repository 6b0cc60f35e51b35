#pragma once

#include <string>
#include <string_view>

#include "displays/desktop/connection.h"
#include "displays/desktop/modal_window.h"
#include "displays/desktop/window_pool.h"
#include "displays/desktop/window_watch.h"
#include "displays/protocol/messages.h"

namespace desktop {

// Serves one host over its socket, dialog after dialog, until the host ends.
class HostSession {
 public:
  // Takes ownership of the socket `fd` and tells the host that the screen is there.
  explicit HostSession(int fd);

 private:
  void Receive(std::string_view line);
  void Do(const display::protocol::Open& message);
  void Do(const display::protocol::Change& message);
  void Do(const display::protocol::Close& message);
  void Close();
  void EndWithoutAnswer();
  void AnnounceScreen();
  void WatchScreen();

  Connection connection_;
  WindowPool windows_;
  WindowWatch watch_;
  ModalWindow* open_ = nullptr;
  int dialog_ = 0;  // the number that the host gave to the open dialog
};

// Tells the host on the socket `fd` that there is no screen and why. Needs no Qt.
void ReportNoScreen(int fd, const std::string& reason);

}  // namespace desktop
