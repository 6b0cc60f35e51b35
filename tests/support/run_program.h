#pragma once

// Runs a program as a shell would, and hands back all that it says.

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace testing_tools {

struct Ending {
  int status = -1;  // 128 plus the signal's number if a signal ended it
  std::string output;
  std::string errors;
};

struct Command {
  std::string program;
  std::vector<std::string> arguments;
  std::string input = {};
  std::vector<std::string> environment = {};  // NAME=VALUE, besides what the test runs under
  std::string output_path = {};               // where standard output goes; empty: into the Ending
};

namespace internal {

using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

inline File TemporaryFile() {
  File file(std::tmpfile(), std::fclose);
  if (!file) throw std::runtime_error("there is no room for a temporary file");
  return file;
}

inline std::string ContentOf(std::FILE* file) {
  std::string content;
  std::rewind(file);
  for (int sign; (sign = std::fgetc(file)) != EOF;) content += static_cast<char>(sign);
  return content;
}

// The test's own environment without a screen, so that no test opens a window by accident.
inline std::vector<std::string> Environment(const std::vector<std::string>& additions) {
  std::vector<std::string> all = additions;
  for (char** entry = environ; *entry != nullptr; ++entry) {
    const std::string name = std::string(*entry).substr(0, std::string(*entry).find('=') + 1);
    bool is_replaced = name == "DISPLAY=" || name == "WAYLAND_DISPLAY=";
    for (const std::string& addition : additions) is_replaced |= addition.starts_with(name);
    if (!is_replaced) all.emplace_back(*entry);
  }
  return all;
}

inline std::vector<char*> Pointers(std::vector<std::string>& words) {
  std::vector<char*> pointers;
  for (std::string& word : words) pointers.push_back(word.data());
  pointers.push_back(nullptr);
  return pointers;
}

// A program that does not end within a minute hangs, and is killed.
inline int WaitFor(pid_t process) {
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::minutes(1);
  int status = 0;
  while (waitpid(process, &status, WNOHANG) == 0) {
    if (std::chrono::steady_clock::now() > deadline) kill(process, SIGKILL);
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

}  // namespace internal

inline Ending Run(const Command& command) {
  const auto input = internal::TemporaryFile();
  const auto output = internal::TemporaryFile();
  const auto errors = internal::TemporaryFile();
  std::fwrite(command.input.data(), 1, command.input.size(), input.get());
  std::rewind(input.get());
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, fileno(input.get()), STDIN_FILENO);
  posix_spawn_file_actions_adddup2(&actions, fileno(output.get()), STDOUT_FILENO);
  posix_spawn_file_actions_adddup2(&actions, fileno(errors.get()), STDERR_FILENO);
  if (!command.output_path.empty()) {
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, command.output_path.c_str(), O_WRONLY,
                                     0);
  }
  std::vector<std::string> words{command.program};
  words.insert(words.end(), command.arguments.begin(), command.arguments.end());
  std::vector<std::string> environment = internal::Environment(command.environment);
  posix_spawnattr_t attributes;  // without the terminal that the tests may have been started in
  posix_spawnattr_init(&attributes);
  posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSID);
  pid_t process = 0;
  const int error =
      posix_spawn(&process, command.program.c_str(), &actions, &attributes,
                  internal::Pointers(words).data(), internal::Pointers(environment).data());
  posix_spawn_file_actions_destroy(&actions);
  posix_spawnattr_destroy(&attributes);
  if (error != 0) throw std::runtime_error("cannot start " + command.program);
  Ending ending;
  ending.status = internal::WaitFor(process);
  ending.output = internal::ContentOf(output.get());
  ending.errors = internal::ContentOf(errors.get());
  return ending;
}

}  // namespace testing_tools
