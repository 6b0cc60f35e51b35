// A host that shows one dialog on the desktop. It prints what the user does, a line each, until the
// dialog is escaped, and then what is no longer as it was before.

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <clocale>
#include <cstdio>
#include <fstream>
#include <set>
#include <string>

#include "platform/carbon/CarbonHost.h"
#include "tests/desktop/example_dialogs.h"
#include "tests/desktop/processes.h"

namespace {

std::set<std::string> OwnState() {
  std::set<std::string> state{std::string("locale ") + std::setlocale(LC_ALL, nullptr)};
  for (char** variable = environ; *variable; ++variable) state.insert(*variable);
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);) {
    for (const char* own : {"SigBlk", "SigIgn", "SigCgt", "Threads"}) {
      if (line.starts_with(own)) state.insert(line);
    }
  }
  for (const std::string& target : desktop_test::DescriptorsOf("self")) state.insert(target);
  std::ifstream maps("/proc/self/maps");
  for (std::string line; std::getline(maps, line);) {
    if (line.find("/libQt") != std::string::npos) state.insert("a toolkit");
  }
  return state;
}

// Outlives the host for a while and holds its descriptors meanwhile, among them the display's.
void LeaveChild() {
  if (fork() != 0) return;
  for (const int standard : {0, 1, 2}) close(standard);
  alarm(20);
  pause();
  _exit(0);
}

}  // namespace

int main(int argc, char**) {
  using namespace desktop_test;
  std::setlocale(LC_ALL, "C.UTF-8");
  signal(SIGUSR1, [](int) {});
  sigset_t blocked;
  sigemptyset(&blocked);
  sigaddset(&blocked, SIGUSR2);
  sigprocmask(SIG_BLOCK, &blocked, nullptr);
  open("/proc/self/maps", O_RDONLY);  // without close-on-exec
  const std::set<std::string> before = OwnState();
  display::Display& display = carbon::DefaultDisplay();
  if (!display.Open(Dialog({Field(1, ControlKind::kEdit)}, 1))) return 1;
  if (argc > 1) LeaveChild();
  for (std::string said; said != "escape" && said != "gone";) {
    said = Said(display.NextAction());
    std::puts(said.c_str());
    std::fflush(stdout);
  }
  display.Close();
  for (const std::string& now : OwnState()) {
    if (!before.contains(now)) std::puts(now.c_str());
  }
}
