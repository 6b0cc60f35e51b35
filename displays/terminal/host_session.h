#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "displays/protocol/messages.h"
#include "displays/terminal/connection.h"
#include "displays/terminal/dialog.h"
#include "displays/terminal/signals.h"
#include "displays/terminal/terminal.h"

namespace terminal {

// Serves one host over its socket, dialog after dialog, until the host ends or the terminal is
// gone.
class HostSession {
 public:
  // Takes ownership of the socket `fd`.
  explicit HostSession(int fd);
  HostSession(const HostSession&) = delete;
  HostSession& operator=(const HostSession&) = delete;
  ~HostSession();

  // The exit status, when all is over.
  int Run();

 private:
  void WaitAndDo();
  void TakeSignals();
  void TakeMessages();
  void TakeEvents();
  void Do(const display::protocol::Open& message);
  void Do(const display::protocol::Change& message);
  void Do(const display::protocol::Close& message);
  void HandleSignal(int signal_number);
  void HandleEvent(const Event& event);
  void Interrupt();
  void StopAll();
  void Suspend();
  void Return();
  void GiveUp(const std::string& why);

  Connection connection_;
  Signals signals_;
  Terminal terminal_;
  int host_;  // tells when the host has ended, by whoever holds the other end of its socket
  std::optional<Dialog> dialog_;
  int number_ = 0;  // that the host gave to the open dialog
  std::optional<int> status_;
};

}  // namespace terminal
