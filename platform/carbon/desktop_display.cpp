#include "platform/carbon/desktop_display.h"

#include <dlfcn.h>
#include <poll.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <filesystem>

extern "C" {  // glibc 2.36 forgets to say so
#include <sys/pidfd.h>
}

namespace display {
namespace {

constexpr const char* kProgram = "tarvo-desktop";
constexpr const char* kMissing =
    "tarvo-desktop is missing: it belongs beside libCarbon or in ../bin";
constexpr const char* kDoesNotStart = "tarvo-desktop does not start";
constexpr const char* kEnded = "tarvo-desktop or its screen has ended";
constexpr Rect kNoScreen{0, 0, 1080, 1920};
constexpr int kSocketInChild = 3;
constexpr int kPatience = 1000;  // milliseconds for the program to end by itself

// Where this code was loaded from says where the program is, whatever the current folder and PATH.
std::string FindProgram() {
  namespace fs = std::filesystem;
  Dl_info self{};
  if (dladdr(reinterpret_cast<const void*>(&FindProgram), &self) == 0) return "";
  std::error_code error;
  const fs::path folder = fs::canonical(self.dli_fname, error).parent_path();
  for (const fs::path& place : {folder / kProgram, folder.parent_path() / "bin" / kProgram}) {
    if (access(place.c_str(), X_OK) == 0) return place;
  }
  return "";
}

// What the child starts with: its socket as number 3, nothing above it, and no signal blocked,
// ignored or handled.
class SpawnPlan {
 public:
  explicit SpawnPlan(int socket_of_child) {
    posix_spawn_file_actions_init(&actions_);
    posix_spawn_file_actions_adddup2(&actions_, socket_of_child, kSocketInChild);
    posix_spawn_file_actions_addclosefrom_np(&actions_, kSocketInChild + 1);
    posix_spawnattr_init(&attributes_);
    posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    sigset_t signals;
    sigemptyset(&signals);
    posix_spawnattr_setsigmask(&attributes_, &signals);
    sigfillset(&signals);
    posix_spawnattr_setsigdefault(&attributes_, &signals);
  }
  SpawnPlan(const SpawnPlan&) = delete;
  SpawnPlan& operator=(const SpawnPlan&) = delete;
  ~SpawnPlan() {
    posix_spawn_file_actions_destroy(&actions_);
    posix_spawnattr_destroy(&attributes_);
  }

  bool Run(pid_t* process, const std::string& program) {
    std::string name = kProgram;
    std::string option = "--connection";
    std::string number = std::to_string(kSocketInChild);
    char* arguments[] = {name.data(), option.data(), number.data(), nullptr};
    return posix_spawn(process, program.c_str(), &actions_, &attributes_, arguments, environ) == 0;
  }

 private:
  posix_spawn_file_actions_t actions_;
  posix_spawnattr_t attributes_;
};

// Waits until the process has ended, but not for long.
bool EndsSoon(pid_t process) {
  const int process_fd = pidfd_open(process, 0);
  if (process_fd < 0) return false;
  pollfd waiting{process_fd, POLLIN, 0};
  int ended;
  do {
    ended = poll(&waiting, 1, kPatience);
  } while (ended < 0 && errno == EINTR);
  close(process_fd);
  return ended > 0;
}

bool HasInput(int socket_fd) {
  pollfd waiting{socket_fd, POLLIN, 0};
  return poll(&waiting, 1, 0) > 0;
}

void Reap(pid_t process) {
  while (waitpid(process, nullptr, 0) < 0 && errno == EINTR) {
  }
}

Json SelectionsOf(const Description& dialog) {
  Json selections = Json::object();
  if (const auto* window = std::get_if<Window>(&dialog)) {
    for (std::size_t i = 0; i < window->controls.size(); ++i) {
      if (window->controls[i].kind != ControlKind::kList) continue;
      selections[std::to_string(i)] = SelectionToJson(window->controls[i]);
    }
  }
  return selections;
}

}  // namespace

DesktopDisplay::DesktopDisplay() : program_(FindProgram()) {}

DesktopDisplay::~DesktopDisplay() { Stop(); }

Rect DesktopDisplay::MainScreen() { return Start() ? screen_ : kNoScreen; }

bool DesktopDisplay::Open(const Description& dialog) {
  ++dialog_;
  return Start() &&
         Send({{"open", ToJson(dialog)}, {"dialog", dialog_}, {"selection", SelectionsOf(dialog)}});
}

std::optional<Action> DesktopDisplay::NextAction() {
  try {
    while (const auto message = Receive()) {
      if (message->contains("ready")) {
        NoteScreen(*message);
      } else if (message->at("dialog") == dialog_) {
        return ActionFromJson(*message);
      }
    }
  } catch (const std::exception&) {
    Stop();
  }
  return std::nullopt;
}

void DesktopDisplay::Change(std::size_t index, const Control& control) {
  const Json selection =
      control.kind == ControlKind::kList ? SelectionToJson(control) : Json(nullptr);
  Send({{"change", index},
        {"dialog", dialog_},
        {"control", ToJson(control)},
        {"selection", selection}});
}

// The window offers nothing that the dialog does not have, so there is nobody to tell.
void DesktopDisplay::Reject(const std::string&) {}

void DesktopDisplay::Close() { Send(Json::object({{"close", dialog_}})); }

bool DesktopDisplay::Start() {
  TakeNews();
  if (socket_ >= 0) return true;
  if (!Spawn()) return false;
  if (IsReady()) return true;
  Stop();
  return false;
}

// Between dialogs the program may have gone, or the screen may have changed; late actions of the
// dialog before are dropped.
void DesktopDisplay::TakeNews() {
  try {
    while (socket_ >= 0 && (!received_.empty() || HasInput(socket_))) {
      const auto message = Receive();
      if (message && message->contains("ready")) NoteScreen(*message);
    }
  } catch (const std::exception&) {
    Stop();
  }
}

bool DesktopDisplay::IsReady() {
  try {
    const auto message = Receive();
    return message && NoteScreen(*message);
  } catch (const std::exception&) {
    return false;
  }
}

bool DesktopDisplay::NoteScreen(const Json& message) {
  if (!message.at("ready").get<bool>()) {
    why_lost_ = message.at("error");
    return false;
  }
  const Json& screen = message.at("screen");
  screen_ = {screen.at(0), screen.at(1), screen.at(2), screen.at(3)};
  return true;
}

bool DesktopDisplay::Spawn() {
  why_lost_ = kMissing;
  if (program_.empty()) return false;
  why_lost_ = kDoesNotStart;
  int ends[2];
  if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0) return false;
  const bool started = SpawnPlan(ends[1]).Run(&process_, program_);
  close(ends[1]);
  if (started) {
    why_lost_ = kEnded;  // unless the program says otherwise
    socket_ = ends[0];
  } else {
    close(ends[0]);
  }
  return started;
}

void DesktopDisplay::Stop() {
  if (socket_ < 0) return;
  close(socket_);
  socket_ = -1;
  if (!EndsSoon(process_)) kill(process_, SIGKILL);
  Reap(process_);
  received_.clear();
}

bool DesktopDisplay::Send(const Json& message) {
  if (socket_ < 0) return false;
  const std::string line = message.dump(-1, ' ', false, Json::error_handler_t::replace) + '\n';
  for (std::size_t sent = 0; sent < line.size();) {
    const ssize_t count = send(socket_, line.data() + sent, line.size() - sent, MSG_NOSIGNAL);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) {
      Stop();
      return false;
    }
    sent += static_cast<std::size_t>(count);
  }
  return true;
}

// The next line. Nothing where the program is gone; one that says no JSON is made to go.
std::optional<Json> DesktopDisplay::Receive() {
  if (socket_ < 0) return std::nullopt;
  std::size_t end;
  while ((end = received_.find('\n')) == std::string::npos) {
    char buffer[4096];
    const ssize_t count = recv(socket_, buffer, sizeof buffer, 0);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) {
      Stop();
      return std::nullopt;
    }
    received_.append(buffer, static_cast<std::size_t>(count));
  }
  const std::string line = received_.substr(0, end);
  received_.erase(0, end + 1);
  return Json::parse(line);
}

}  // namespace display
