#include "workbench/child_program.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <optional>
#include <string_view>

namespace workbench {
namespace {

// The child reads the pipe, prints nothing among our results, and starts with every signal as
// usual.
std::optional<pid_t> Spawn(const std::vector<std::string>& command, int input_fd) {
  std::vector<char*> arguments;
  arguments.reserve(command.size() + 1);
  for (const std::string& word : command) arguments.push_back(const_cast<char*>(word.c_str()));
  arguments.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, input_fd, STDIN_FILENO);
  posix_spawn_file_actions_adddup2(&actions, STDERR_FILENO, STDOUT_FILENO);
  posix_spawnattr_t attributes;
  posix_spawnattr_init(&attributes);
  posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF);
  sigset_t signals;
  sigfillset(&signals);
  posix_spawnattr_setsigdefault(&attributes, &signals);
  pid_t process = 0;
  const int error = posix_spawn(&process, command.front().c_str(), &actions, &attributes,
                                arguments.data(), environ);
  posix_spawnattr_destroy(&attributes);
  posix_spawn_file_actions_destroy(&actions);
  if (error != 0) return std::nullopt;
  return process;
}

// If the child does not read all of it, its exit status says whether that was an error.
void WriteAll(int fd, std::string_view text) {
  while (!text.empty()) {
    const ssize_t count = write(fd, text.data(), text.size());
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return;
    text.remove_prefix(static_cast<std::size_t>(count));
  }
}

bool EndsWell(pid_t process) {
  int status = 0;
  while (waitpid(process, &status, 0) < 0) {
    if (errno != EINTR) return false;
  }
  return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

}  // namespace

bool RunChild(const std::vector<std::string>& command, const std::string& input) {
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) return false;
  const std::optional<pid_t> process = Spawn(command, ends[0]);
  close(ends[0]);
  if (process) WriteAll(ends[1], input);
  close(ends[1]);
  return process && EndsWell(*process);
}

}  // namespace workbench
