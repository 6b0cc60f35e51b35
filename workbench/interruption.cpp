#include "workbench/interruption.h"

#include <sys/epoll.h>
#include <sys/eventfd.h>
#include <sys/timerfd.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdint>

#include "calculation/interruption.h"
#include "workbench/failure.h"

namespace workbench {
namespace {

int event = -1;  // the handler can reach nothing but globals
int timer = -1;
int both = -1;

void Interrupt(int /*signal*/) {
  if (calculation::interruption.exchange(true)) _exit(static_cast<int>(Status::kInterrupted));
  const int error = errno;
  constexpr std::uint64_t kOnce = 1;
  [[maybe_unused]] const ssize_t written = write(event, &kOnce, sizeof kOnce);
  errno = error;
}

void Watch(int descriptor) {
  if (both < 0) both = epoll_create1(EPOLL_CLOEXEC);
  epoll_event readable{EPOLLIN, {}};
  epoll_ctl(both, EPOLL_CTL_ADD, descriptor, &readable);
}

}  // namespace

void HeedInterruptions() {
  struct sigaction action {};
  if (sigaction(SIGINT, nullptr, &action) != 0 || action.sa_handler == SIG_IGN) return;
  if (both >= 0) close(both);  // what is forked waits for interruptions of its own
  both = timer = -1;
  event = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
  action.sa_handler = Interrupt;  // without SA_RESTART: what waits for input is to notice
  sigaction(SIGINT, &action, nullptr);
}

void ForgetInterruption() {
  std::uint64_t count = 0;
  [[maybe_unused]] const ssize_t drained = read(event, &count, sizeof count);
  calculation::interruption = false;
}

// A timer and what the handler writes are waited for as one.
void LimitWaiting(double seconds) {
  if (timer < 0) {
    timer = timerfd_create(CLOCK_MONOTONIC, TFD_CLOEXEC | TFD_NONBLOCK);
    Watch(timer);
  }
  const auto whole = static_cast<time_t>(seconds);
  const auto rest = static_cast<long>((seconds - static_cast<double>(whole)) * 1e9);
  const itimerspec time{{0, 0}, {whole, rest}};
  timerfd_settime(timer, 0, &time, nullptr);
}

bool TakeTimeout() {
  std::uint64_t count = 0;
  return timer >= 0 && read(timer, &count, sizeof count) > 0;
}

int InterruptionDescriptor() {
  Watch(event);
  return both;
}

}  // namespace workbench
