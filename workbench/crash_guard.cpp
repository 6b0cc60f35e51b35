#include "workbench/crash_guard.h"

#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <string_view>
#include <utility>

#include "workbench/failure.h"

namespace workbench {
namespace {

const char* guarded = nullptr;  // the handlers can reach nothing but globals

void Say(std::string_view text) {
  [[maybe_unused]] const ssize_t written = write(STDERR_FILENO, text.data(), text.size());
}

[[noreturn]] void End(std::string_view how) {
  Say("tarvo: ");
  Say(guarded);
  Say(how);
  Say("\n");
  _exit(static_cast<int>(Status::kBundle));
}

void OnCrash(int number) {
  if (!guarded) {
    std::signal(number, SIG_DFL);
    std::raise(number);
    return;
  }
  const char* const name = sigdescr_np(number);
  std::array<char, 100> how{": "};
  std::strncat(how.data(), name ? name : "a signal", how.size() - 3);
  End(how.data());
}

void OnExit() {
  if (guarded) End(": it ended the program");
}

// On a stack of their own, since the usual one may be what ran out.
void InstallHandlers() {
  static std::array<char, 65536> stack;
  const stack_t alternative{stack.data(), 0, stack.size()};
  sigaltstack(&alternative, nullptr);
  for (const int number : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT, SIGTRAP, SIGSYS}) {
    struct sigaction action {};
    if (sigaction(number, nullptr, &action) != 0 || action.sa_handler != SIG_DFL) continue;
    action.sa_handler = OnCrash;
    action.sa_flags = SA_ONSTACK | SA_NODEFER;
    sigaction(number, &action, nullptr);
  }
  std::atexit(OnExit);
}

}  // namespace

CrashGuard::CrashGuard(std::string what) : what_(std::move(what)), outer_(guarded) {
  static const bool installed = (InstallHandlers(), true);
  (void)installed;
  guarded = what_.c_str();
}

CrashGuard::~CrashGuard() { guarded = outer_; }

}  // namespace workbench
