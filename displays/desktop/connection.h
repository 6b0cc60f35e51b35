#pragma once

#include <QByteArray>
#include <QSocketNotifier>
#include <functional>

#include "platform/carbon/display_json.h"

namespace desktop {

// The socket to the host: one JSON object a line, both ways. Neither direction ever blocks, so a
// host that is stopped for a while does not stop the drawing.
class Connection {
 public:
  struct Listener {
    std::function<void(const display::Json&)> received;
    std::function<void()> closed;                    // the host has ended
    std::function<void(const std::string&)> broken;  // what arrived makes no sense, and why
  };

  // Takes ownership of the connected stream socket `fd`. The listener is called from Qt's event
  // loop.
  Connection(int fd, Listener listener);
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;
  ~Connection();

  void Send(const display::Json& message);

 private:
  void Read();
  void HandleLines();
  void Write();
  void Stop();

  int fd_;
  Listener listener_;
  QSocketNotifier readable_;
  QSocketNotifier writable_;
  QByteArray received_;
  QByteArray unsent_;
};

}  // namespace desktop
