#include "displays/protocol/display_program.h"

#include <dlfcn.h>
#include <poll.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <iterator>
#include <system_error>
#include <utility>

extern "C" {  // missing in the header of glibc 2.36
#include <sys/pidfd.h>
}

namespace display {
namespace {

using Clock = std::chrono::steady_clock;

constexpr int kSocketInChild = 3;
constexpr int kTimeToEnd = 1000;  // milliseconds in which the program may end by itself

// The program's path, found from that of the library that holds this code: the current folder and
// PATH do not matter. Empty if there is no such program.
std::string FindProgram(const std::string& name) {
  namespace fs = std::filesystem;
  Dl_info self{};
  if (dladdr(reinterpret_cast<const void*>(&FindProgram), &self) == 0) return "";
  std::error_code error;
  const fs::path place = fs::canonical(self.dli_fname, error).parent_path() / name;
  return access(place.c_str(), X_OK) == 0 ? place.string() : "";
}

// What the child starts with: its socket as number 3, nothing above it, and no signal blocked,
// ignored or handled, but that job control stays off if the host has it off.
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
    for (const int stop : {SIGTSTP, SIGTTIN, SIGTTOU}) sigdelset(&signals, stop);
    posix_spawnattr_setsigdefault(&attributes_, &signals);
  }
  SpawnPlan(const SpawnPlan&) = delete;
  SpawnPlan& operator=(const SpawnPlan&) = delete;
  ~SpawnPlan() {
    posix_spawn_file_actions_destroy(&actions_);
    posix_spawnattr_destroy(&attributes_);
  }

  bool Run(pid_t* process, const std::string& path, std::string name, std::string option) {
    std::string number = std::to_string(kSocketInChild);
    char* arguments[] = {name.data(), option.data(), number.data(), nullptr};
    return posix_spawn(process, path.c_str(), &actions_, &attributes_, arguments, environ) == 0;
  }

 private:
  posix_spawn_file_actions_t actions_;
  posix_spawnattr_t attributes_;
};

// Waits a limited time for the process to end. Returns whether it did.
bool EndsSoon(pid_t process) {
  const int process_fd = pidfd_open(process, 0);
  if (process_fd < 0) return false;
  pollfd waiting{process_fd, POLLIN, 0};
  int ended;
  do {
    ended = poll(&waiting, 1, kTimeToEnd);
  } while (ended < 0 && errno == EINTR);
  close(process_fd);
  return ended > 0;
}

int MillisecondsUntil(Clock::time_point deadline) {
  if (deadline == Clock::time_point::max()) return -1;
  const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
  return static_cast<int>(std::max<std::int64_t>(left.count(), 0));
}

void Reap(pid_t process) {
  while (waitpid(process, nullptr, 0) < 0 && errno == EINTR) {
  }
}

}  // namespace

DisplayProgram::DisplayProgram(std::string name, std::string option)
    : name_(std::move(name)), option_(std::move(option)), path_(FindProgram(name_)) {}

std::string DisplayProgram::Start() {
  if (path_.empty()) return name_ + " is missing: it belongs beside libCarbon";
  int ends[2];
  if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0) {
    return name_ + " does not start";
  }
  const bool started = SpawnPlan(ends[1]).Run(&process_, path_, name_, option_);
  close(ends[1]);
  if (started) {
    socket_ = ends[0];
    return "";
  }
  close(ends[0]);
  return name_ + " does not start";
}

void DisplayProgram::Stop() {
  if (socket_ < 0) return;
  close(socket_);
  socket_ = -1;
  if (!EndsSoon(process_)) kill(process_, SIGKILL);
  Reap(process_);
  received_.clear();
}

bool DisplayProgram::HasLine(std::chrono::milliseconds time) {
  const auto deadline = Clock::now() + time;
  while (IsRunning() && !HasWholeLine()) {
    if (!WaitForMore(deadline)) return false;
    Receive();
  }
  return IsRunning();
}

// False if the program says nothing until then, or if nothing is to be waited for. The host's
// signals do not end the waiting.
bool DisplayProgram::WaitForMore(Clock::time_point deadline) const {
  pollfd waiting[] = {{socket_, POLLIN, 0}, {stop_, POLLIN, 0}};
  int ready;
  do {
    ready = poll(waiting, std::size(waiting), MillisecondsUntil(deadline));
  } while (ready < 0 && errno == EINTR);
  return ready > 0 && waiting[1].revents == 0;
}

std::optional<std::string> DisplayProgram::ReadLine() {
  while (!HasWholeLine()) {
    if (!IsRunning() || !WaitForMore(Clock::time_point::max()) || !Receive()) return std::nullopt;
  }
  const std::size_t end = received_.find('\n');
  std::string line = received_.substr(0, end);
  received_.erase(0, end + 1);
  return line;
}

// Waits for more of what the program says. False if it is gone, and is then stopped.
bool DisplayProgram::Receive() {
  if (!IsRunning()) return false;
  char buffer[4096];
  ssize_t count;
  do {
    count = recv(socket_, buffer, sizeof buffer, 0);
  } while (count < 0 && errno == EINTR);
  if (count > 0) {
    received_.append(buffer, static_cast<std::size_t>(count));
  } else {
    Stop();
  }
  return count > 0;
}

bool DisplayProgram::Write(const std::string& line) {
  if (socket_ < 0) return false;
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

}  // namespace display
