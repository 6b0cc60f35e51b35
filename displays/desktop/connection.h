#pragma once

#include <QByteArray>
#include <QSocketNotifier>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace desktop {

// Ends the program's event loop with status 1, and says why on standard error.
void EndWithMessage(const std::string& reason);

// The socket to the host: a message a line, both ways. Neither direction ever blocks, so a
// host that is stopped for a while does not stop the drawing.
class Connection {
 public:
  using Listener = std::function<void(std::string_view line)>;

  // Takes ownership of the connected stream socket `fd`. The listener is called from Qt's event
  // loop. The program ends when the host does, or with what the listener throws as its message.
  Connection(int fd, Listener received);
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;
  ~Connection();

  // Sends a line with its end.
  void Send(const std::string& line);

 private:
  void WatchHost();
  void Read();
  void HandleLines();
  void Write();
  void Stop();

  int fd_;
  Listener received_line_;
  QSocketNotifier readable_;
  QSocketNotifier writable_;
  std::unique_ptr<QSocketNotifier> host_ended_;
  QByteArray received_;
  QByteArray unsent_;
};

}  // namespace desktop
