#include "displays/desktop/connection.h"

#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <exception>
#include <utility>

namespace desktop {
namespace {

bool WouldBlock() { return errno == EAGAIN || errno == EWOULDBLOCK; }

}  // namespace

Connection::Connection(int fd, Listener listener)
    : fd_(fd),
      listener_(std::move(listener)),
      readable_(fd, QSocketNotifier::Read),
      writable_(fd, QSocketNotifier::Write) {
  fcntl(fd_, F_SETFL, fcntl(fd_, F_GETFL) | O_NONBLOCK);
  fcntl(fd_, F_SETFD, FD_CLOEXEC);
  writable_.setEnabled(false);
  QObject::connect(&readable_, &QSocketNotifier::activated, &readable_, [this] { Read(); });
  QObject::connect(&writable_, &QSocketNotifier::activated, &writable_, [this] { Write(); });
}

Connection::~Connection() {
  Stop();
  close(fd_);
}

void Connection::Send(const std::string& line) {
  unsent_ += QByteArray::fromStdString(line);
  Write();
}

void Connection::Read() {
  char buffer[16384];
  const ssize_t count = recv(fd_, buffer, sizeof buffer, 0);
  if (count > 0) {
    received_.append(buffer, count);
    HandleLines();
  } else if (count == 0 || !WouldBlock()) {
    Stop();
    listener_.closed();
  }
}

void Connection::HandleLines() {
  try {
    for (qsizetype end = received_.indexOf('\n'); end >= 0; end = received_.indexOf('\n')) {
      const QByteArray line = received_.first(end);
      received_.remove(0, end + 1);
      listener_.received({line.constData(), static_cast<std::size_t>(line.size())});
    }
  } catch (const std::exception& error) {
    Stop();
    listener_.broken(error.what());
  }
}

void Connection::Write() {
  while (!unsent_.isEmpty()) {
    const ssize_t count =
        send(fd_, unsent_.constData(), static_cast<std::size_t>(unsent_.size()), MSG_NOSIGNAL);
    if (count < 0) {
      if (!WouldBlock()) unsent_.clear();  // the host is gone; reading notices that
      break;
    }
    unsent_.remove(0, count);
  }
  writable_.setEnabled(!unsent_.isEmpty());
}

void Connection::Stop() {
  readable_.setEnabled(false);
  writable_.setEnabled(false);
}

}  // namespace desktop
