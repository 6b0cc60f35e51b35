#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace terminal {

// The socket to the host: a message a line, both ways. Neither direction ever blocks, so a host
// that is stopped for a while does not stop the drawing.
class Connection {
 public:
  // Takes ownership of the connected stream socket `fd`.
  explicit Connection(int fd);
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;
  ~Connection();

  int Descriptor() const { return fd_; }
  bool HasUnsent() const { return !unsent_.empty(); }

  // Sends a line with its end, or as much of it as goes now; Flush sends more.
  void Send(const std::string& line);
  void Flush();

  // Hands on the lines that have come, without their ends. False once the host has closed its end.
  bool Read(const std::function<void(std::string_view line)>& received);

 private:
  int fd_;
  std::string received_;
  std::string unsent_;
};

}  // namespace terminal
