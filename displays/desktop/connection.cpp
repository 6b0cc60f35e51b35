#include "displays/desktop/connection.h"

#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <QCoreApplication>
#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <exception>
#include <utility>

extern "C" {  // missing in the header of glibc 2.36
#include <sys/pidfd.h>
}

namespace desktop {
namespace {

bool WouldBlock() { return errno == EAGAIN || errno == EWOULDBLOCK; }

}  // namespace

void EndWithMessage(const std::string& reason) {
  std::fprintf(stderr, "tarvo-desktop: %s\n", reason.c_str());
  QCoreApplication::exit(1);
}

Connection::Connection(int fd, Listener received)
    : fd_(fd),
      received_line_(std::move(received)),
      readable_(fd, QSocketNotifier::Read),
      writable_(fd, QSocketNotifier::Write) {
  fcntl(fd_, F_SETFL, fcntl(fd_, F_GETFL) | O_NONBLOCK);
  fcntl(fd_, F_SETFD, FD_CLOEXEC);
  writable_.setEnabled(false);
  QObject::connect(&readable_, &QSocketNotifier::activated, &readable_, [this] { Read(); });
  QObject::connect(&writable_, &QSocketNotifier::activated, &writable_, [this] { Write(); });
  WatchHost();
}

Connection::~Connection() {
  Stop();
  close(fd_);
}

// The socket does not close with the host if a child of the host has inherited its other end.
void Connection::WatchHost() {
  const int host = pidfd_open(getppid(), 0);
  if (host < 0) return;
  host_ended_ = std::make_unique<QSocketNotifier>(host, QSocketNotifier::Read);
  QObject::connect(host_ended_.get(), &QSocketNotifier::activated, host_ended_.get(), [this] {
    Stop();
    QCoreApplication::exit(0);
  });
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
    QCoreApplication::exit(0);
  }
}

void Connection::HandleLines() {
  try {
    for (qsizetype end = received_.indexOf('\n'); end >= 0; end = received_.indexOf('\n')) {
      const QByteArray line = received_.first(end);
      received_.remove(0, end + 1);
      received_line_({line.constData(), static_cast<std::size_t>(line.size())});
    }
  } catch (const std::exception& error) {
    Stop();
    EndWithMessage(error.what());
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
  if (host_ended_) host_ended_->setEnabled(false);
  readable_.setEnabled(false);
  writable_.setEnabled(false);
}

}  // namespace desktop
