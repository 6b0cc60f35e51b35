#include "bench/child.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace bench {
namespace {

std::vector<pid_t> ChildrenOf(pid_t process) {
  const std::string folder = "/proc/" + std::to_string(process);
  std::ifstream file(folder + "/task/" + std::to_string(process) + "/children");
  std::vector<pid_t> children;
  for (pid_t child; file >> child;) children.push_back(child);
  return children;
}

double KilobytesOf(pid_t process) {
  std::ifstream file("/proc/" + std::to_string(process) + "/smaps_rollup");
  for (std::string word; file >> word;) {
    double kilobytes;
    if (word == "Pss:" && file >> kilobytes) return kilobytes;
  }
  return 0;
}

double KilobytesOfTree(pid_t process) {
  double kilobytes = KilobytesOf(process);
  for (const pid_t child : ChildrenOf(process)) kilobytes += KilobytesOfTree(child);
  return kilobytes;
}

}  // namespace

double Milliseconds() {
  timespec now{};
  clock_gettime(CLOCK_MONOTONIC, &now);
  return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

std::string FindProgram(const std::string& name) {
  if (name.find('/') != std::string::npos) return access(name.c_str(), X_OK) == 0 ? name : "";
  const char* path = std::getenv("PATH");
  std::istringstream folders(path ? path : "");
  for (std::string folder; std::getline(folders, folder, ':');) {
    const std::string program = folder + "/" + name;
    if (access(program.c_str(), X_OK) == 0) return program;
  }
  return "";
}

Child::Child(const Command& command) {
  std::vector<char*> arguments;
  for (const std::string& word : command) arguments.push_back(const_cast<char*>(word.c_str()));
  arguments.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
  posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
  posix_spawnattr_t attributes;
  posix_spawnattr_init(&attributes);
  posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP);
  const int error =
      posix_spawn(&process_, arguments[0], &actions, &attributes, arguments.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  posix_spawnattr_destroy(&attributes);
  if (error != 0) throw std::runtime_error("cannot start " + command.front());
}

Child::~Child() {
  if (process_ < 0) return;
  kill(-process_, SIGKILL);
  Wait();
}

int Child::Wait() {
  int status = 0;
  waitpid(process_, &status, 0);
  process_ = -1;
  return status;
}

double Child::Memory() const { return KilobytesOfTree(process_) / 1024; }

}  // namespace bench
