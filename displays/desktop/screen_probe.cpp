#include "displays/desktop/screen_probe.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>

#include "displays/desktop/environment.h"

namespace desktop {
namespace {

std::string WaylandSocketPath() {
  std::string name = Environment("WAYLAND_DISPLAY");
  if (name.empty() || name.front() == '/') return name;
  return Environment("XDG_RUNTIME_DIR") + "/" + name;
}

bool WaylandAnswers() {
  const std::string path = WaylandSocketPath();
  sockaddr_un address{};
  if (path.empty() || path.size() >= sizeof address.sun_path) return false;
  address.sun_family = AF_UNIX;
  std::memcpy(address.sun_path, path.c_str(), path.size());
  const int socket_fd = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  if (socket_fd < 0) return false;
  const bool answers =
      connect(socket_fd, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
  close(socket_fd);
  return answers;
}

std::string NoAnswer(bool x11_wanted, bool wayland_wanted) {
  const std::string x11 = x11_wanted ? Environment("DISPLAY") : "";
  const std::string wayland = wayland_wanted ? Environment("WAYLAND_DISPLAY") : "";
  if (!x11.empty() || !wayland.empty()) {
    return "no answer from the screen " + (x11.empty() ? wayland : x11);
  }
  if (x11_wanted && wayland_wanted) return "neither DISPLAY nor WAYLAND_DISPLAY is set";
  return std::string(x11_wanted ? "DISPLAY" : "WAYLAND_DISPLAY") + " is not set";
}

}  // namespace

ScreenProbe::ScreenProbe() {
  const std::string platform = Environment("QT_QPA_PLATFORM");
  const bool x11_wanted = platform.empty() || platform.starts_with("xcb");
  const bool wayland_wanted = platform.empty() || platform.starts_with("wayland");
  if (!x11_wanted && !wayland_wanted) return;  // a platform that needs no server

  const bool x11 = x11_wanted && XServerAnswers();
  const bool wayland = wayland_wanted && WaylandAnswers();
  if (!x11 && !wayland) {
    why_none_ = NoAnswer(x11_wanted, wayland_wanted);
  } else if (x11 != wayland) {
    setenv("QT_QPA_PLATFORM", x11 ? "xcb" : "wayland", 0);
  }
}

bool ScreenProbe::XServerAnswers() {
  if (Environment("DISPLAY").empty()) return false;
  connection_.reset(xcb_connect(nullptr, nullptr));
  return xcb_connection_has_error(connection_.get()) == 0;
}

}  // namespace desktop
