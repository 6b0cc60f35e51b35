#include "displays/desktop/session_bus.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

#include "displays/desktop/environment.h"

namespace desktop {
namespace {

constexpr const char* kAddress = "DBUS_SESSION_BUS_ADDRESS";
constexpr const char* kNone = "disabled:";

}  // namespace

bool HasSessionBus() {
  const std::string address = Environment(kAddress);
  if (!address.empty()) return address != kNone;
  const std::string folder = Environment("XDG_RUNTIME_DIR");
  struct stat bus {};
  return !folder.empty() && stat((folder + "/bus").c_str(), &bus) == 0 && S_ISSOCK(bus.st_mode) &&
         bus.st_uid == geteuid();  // another user's is no use
}

void KeepQtFromStartingSessionBus() {
  if (!HasSessionBus()) setenv(kAddress, kNone, 1);
}

}  // namespace desktop
