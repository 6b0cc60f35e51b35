#include "displays/terminal/guard.h"

#include <fcntl.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

#include "displays/terminal/capabilities.h"

namespace terminal {
namespace {

struct State {
  bool taken = false;
  termios before{};
};

// What comes to all of the display's processes must not end this one before the display.
void StayAlive() {
  for (const int signal_number : {SIGHUP, SIGINT, SIGQUIT, SIGTERM, SIGTSTP, SIGTTIN, SIGTTOU}) {
    std::signal(signal_number, SIG_IGN);
  }
  sigset_t none;
  sigemptyset(&none);
  sigprocmask(SIG_SETMASK, &none, nullptr);
}

// The last state that was told when the display has gone.
State LastState(int pipe) {
  State state;
  State told;
  while (true) {
    const ssize_t count = read(pipe, &told, sizeof told);
    if (count == static_cast<ssize_t>(sizeof told)) {
      state = told;
    } else if (count >= 0 || errno != EINTR) {
      return state;
    }
  }
}

void Tell(int pipe, const State& state) {
  // A guard that is gone guards nothing, and the dialog goes on.
  if (write(pipe, &state, sizeof state) < 0) return;
}

}  // namespace

Guard::Guard(int terminal) {
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) return;
  const pid_t process = fork();
  if (process == 0) {
    close(ends[1]);
    prctl(PR_SET_NAME, "terminal-guard");
    StayAlive();
    const State last = LastState(ends[0]);
    if (last.taken) {
      ResetTerminal(terminal);
      tcsetattr(terminal, TCSADRAIN, &last.before);
    }
    _exit(0);
  }
  close(ends[0]);
  if (process > 0) {
    pipe_ = ends[1];
  } else {
    close(ends[1]);
  }
}

Guard::~Guard() {
  if (pipe_ >= 0) close(pipe_);
}

void Guard::Taken(const termios& before) const {
  if (pipe_ >= 0) Tell(pipe_, {true, before});
}

void Guard::GivenBack() const {
  if (pipe_ >= 0) Tell(pipe_, {});
}

void ResetTerminal(int fd) {
  for (const Capability capability :
       {Capability::kMouseOff, Capability::kPasteOff, Capability::kPlainText,
        Capability::kKeypadOff, Capability::kCursorNormal, Capability::kOtherScreenOff}) {
    Send(capability, fd);
  }
}

}  // namespace terminal
