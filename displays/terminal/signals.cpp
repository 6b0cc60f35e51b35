#include "displays/terminal/signals.h"

#include <sys/signalfd.h>
#include <unistd.h>

namespace terminal {
namespace {

bool IsIgnored(int signal_number) {
  struct sigaction action {};
  sigaction(signal_number, nullptr, &action);
  return action.sa_handler == SIG_IGN;
}

}  // namespace

Signals::Signals() : can_stop_(!IsIgnored(SIGTSTP)) {
  std::signal(SIGPIPE, SIG_IGN);
  sigemptyset(&blocked_);
  for (const int signal_number : {SIGWINCH, SIGCONT, SIGINT, SIGQUIT, SIGTERM, SIGHUP, SIGTSTP}) {
    if (!IsIgnored(signal_number)) sigaddset(&blocked_, signal_number);
  }
  sigprocmask(SIG_BLOCK, &blocked_, nullptr);
  fd_ = signalfd(-1, &blocked_, SFD_CLOEXEC | SFD_NONBLOCK);
}

Signals::~Signals() { close(fd_); }

std::optional<int> Signals::Next() const {
  signalfd_siginfo info;
  if (read(fd_, &info, sizeof info) != static_cast<ssize_t>(sizeof info)) return std::nullopt;
  return static_cast<int>(info.ssi_signo);
}

void Signals::Stop() {
  sigset_t stop;
  sigemptyset(&stop);
  sigaddset(&stop, SIGTSTP);
  std::raise(SIGTSTP);
  sigprocmask(SIG_UNBLOCK, &stop, nullptr);  // it is here that the process stops
  sigprocmask(SIG_BLOCK, &stop, nullptr);
}

}  // namespace terminal
