#include <clocale>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <sstream>
#include <string>
#include <system_error>
#include <vector>

#include "platform/corefoundation/encoding.h"
#include "platform/fmwrapper/FMHost.h"
#include "platform/fmwrapper/FMWrapper.h"
#include "workbench/check/checks.h"
#include "workbench/check/plugin_under_check.h"

namespace workbench::check {
namespace {

// Something of the host that a plug-in has to leave as it is, and how it is.
struct Property {
  std::string name;
  std::string state;
};

Property SignalHandler(int number) {
  struct sigaction action = {};
  sigaction(number, nullptr, &action);
  std::ostringstream state;
  state << reinterpret_cast<const void*>(action.sa_handler) << ' ' << action.sa_flags;
  const char* name = sigabbrev_np(number);
  return {"the handler of SIG" + (name == nullptr ? std::to_string(number) : std::string(name)),
          state.str()};
}

std::string BlockedSignals() {
  sigset_t blocked;
  sigprocmask(SIG_SETMASK, nullptr, &blocked);
  std::string state;
  for (int number = 1; number < NSIG; ++number)
    state += sigismember(&blocked, number) == 1 ? '1' : '0';
  return state;
}

std::vector<Property> HostState() {
  std::error_code none;
  std::vector<Property> state{{"the locale", std::setlocale(LC_ALL, nullptr)},
                              {"the blocked signals", BlockedSignals()},
                              {"the working folder", std::filesystem::current_path(none)}};
  for (int number = 1; number < NSIG; ++number) state.push_back(SignalHandler(number));
  return state;
}

// Compares the host before and after each step of the plug-in's life.
class HostGuard {
 public:
  void ExpectUnchangedBy(const std::string& step) const {
    const std::vector<Property> now = HostState();
    for (std::size_t i = 0; i < now.size(); ++i) {
      Expect(now[i].state == before_[i].state,
             "expected " + step + " to leave " + now[i].name + " as it is, got a change");
    }
  }

 private:
  std::vector<Property> before_ = HostState();
};

void CheckHostState(const Bundle& bundle) {
  const HostGuard guard;
  Plugin plugin(bundle);
  guard.ExpectUnchangedBy("loading");
  plugin.Start();
  guard.ExpectUnchangedBy("the initialisation");
  for (const auto& function : fmx::host::Functions()) {
    Call(function, u"1|1");
    guard.ExpectUnchangedBy(encoding::ToUtf8(function.name));
  }
  plugin.Send(kFMXT_Shutdown);
  guard.ExpectUnchangedBy("the shutdown");
}

}  // namespace

std::vector<Check> HostChecks() { return {{"host-state", CheckHostState}}; }

}  // namespace workbench::check
