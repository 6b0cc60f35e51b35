#include "workbench/interruption.h"

#include <sys/eventfd.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdint>

#include "calculation/interruption.h"
#include "workbench/failure.h"

namespace workbench {
namespace {

int event = -1;  // the handler can reach nothing but globals

void Interrupt(int /*signal*/) {
  if (calculation::interruption.exchange(true)) _exit(static_cast<int>(Status::kInterrupted));
  const int error = errno;
  constexpr std::uint64_t kOnce = 1;
  [[maybe_unused]] const ssize_t written = write(event, &kOnce, sizeof kOnce);
  errno = error;
}

}  // namespace

void HeedInterruptions() {
  struct sigaction action {};
  if (sigaction(SIGINT, nullptr, &action) != 0 || action.sa_handler == SIG_IGN) return;
  event = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
  action.sa_handler = Interrupt;  // without SA_RESTART: what waits for input is to notice
  sigaction(SIGINT, &action, nullptr);
}

void ForgetInterruption() {
  std::uint64_t count = 0;
  [[maybe_unused]] const ssize_t drained = read(event, &count, sizeof count);
  calculation::interruption = false;
}

int InterruptionDescriptor() { return event; }

}  // namespace workbench
