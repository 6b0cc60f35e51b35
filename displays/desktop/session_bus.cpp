#include "displays/desktop/session_bus.h"

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
  return !folder.empty() && access((folder + "/bus").c_str(), F_OK) == 0;
}

void StartNoSessionBus() {
  if (!HasSessionBus()) setenv(kAddress, kNone, 1);
}

}  // namespace desktop
