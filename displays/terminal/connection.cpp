#include "displays/terminal/connection.h"

#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>

namespace terminal {
namespace {

bool WouldBlock() { return errno == EAGAIN || errno == EWOULDBLOCK || errno == EINTR; }

}  // namespace

Connection::Connection(int fd) : fd_(fd) {
  fcntl(fd_, F_SETFL, fcntl(fd_, F_GETFL) | O_NONBLOCK);
  fcntl(fd_, F_SETFD, FD_CLOEXEC);
}

Connection::~Connection() { close(fd_); }

void Connection::Send(const std::string& line) {
  unsent_ += line;
  Flush();
}

void Connection::Flush() {
  while (!unsent_.empty()) {
    const ssize_t count = send(fd_, unsent_.data(), unsent_.size(), MSG_NOSIGNAL);
    if (count < 0) {
      if (!WouldBlock()) unsent_.clear();  // the host is gone; reading notices that
      return;
    }
    unsent_.erase(0, static_cast<std::size_t>(count));
  }
}

bool Connection::Read(const std::function<void(std::string_view line)>& received) {
  char buffer[16384];
  const ssize_t count = recv(fd_, buffer, sizeof buffer, 0);
  if (count == 0 || (count < 0 && !WouldBlock())) return false;
  if (count > 0) received_.append(buffer, static_cast<std::size_t>(count));
  std::size_t start = 0;
  for (std::size_t end; (end = received_.find('\n', start)) != std::string::npos; start = end + 1) {
    received(std::string_view(received_).substr(start, end - start));
  }
  received_.erase(0, start);
  return true;
}

}  // namespace terminal
