#pragma once

#include <QByteArray>
#include <QSocketNotifier>
#include <functional>
#include <string>
#include <string_view>

namespace desktop {

// The socket to the host: a message a line, both ways. Neither direction ever blocks, so a
// host that is stopped for a while does not stop the drawing.
class Connection {
 public:
  struct Listener {
    std::function<void(std::string_view line)> received;
    std::function<void()> closed;                    // the host has ended
    std::function<void(const std::string&)> broken;  // what `received` threw
  };

  // Takes ownership of the connected stream socket `fd`. The listener is called from Qt's event
  // loop.
  Connection(int fd, Listener listener);
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;
  ~Connection();

  // Sends a line with its end.
  void Send(const std::string& line);

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
