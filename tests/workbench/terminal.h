#pragma once

// A terminal for the program under test.

#include <poll.h>
#include <pty.h>

#include "tests/support/tarvo.h"

namespace workbench {

inline constexpr const char* kControlC = "\x03";

class Terminal {
 public:
  // Runs the program in a terminal. `environment` goes with it as NAME=VALUE.
  Terminal(std::vector<std::string> arguments, const std::vector<std::string>& environment)
      : Terminal(TARVO_PROGRAM, std::move(arguments), environment) {}

  Terminal(const std::string& program, std::vector<std::string> arguments,
           const std::vector<std::string>& environment) {
    arguments.insert(arguments.begin(), program);
    process_ = forkpty(&fd_, nullptr, nullptr, nullptr);
    if (process_ < 0) throw std::runtime_error("there is no terminal");
    if (process_ > 0) return;
    std::vector<std::string> all = testing_tools::internal::Environment(environment);
    execve(program.c_str(), testing_tools::internal::Pointers(arguments).data(),
           testing_tools::internal::Pointers(all).data());
    _exit(127);
  }
  Terminal(const Terminal&) = delete;
  Terminal& operator=(const Terminal&) = delete;
  ~Terminal() {
    close(fd_);
    if (process_ > 0) testing_tools::internal::WaitFor(process_);
  }

  void Type(const std::string& keys) const {
    EXPECT_EQ(write(fd_, keys.data(), keys.size()), static_cast<ssize_t>(keys.size()));
  }

  // Waits until `text` has been shown behind what was waited for before.
  void Expect(const std::string& text) {
    std::size_t found;
    while ((found = shown_.find(text)) == std::string::npos) {
      if (!ReadMore()) {
        ADD_FAILURE() << "\"" << text << "\" is not shown, but:\n" << shown_;
        return;
      }
    }
    shown_.erase(0, found + text.size());
  }

  // Waits for the program's end.
  int Status() {
    while (ReadMore()) {
    }
    return testing_tools::internal::WaitFor(std::exchange(process_, 0));
  }

 private:
  static constexpr int kPatience = 10'000;  // milliseconds

  bool ReadMore() {
    pollfd waiting{fd_, POLLIN, 0};
    char buffer[4096];
    if (poll(&waiting, 1, kPatience) <= 0) return false;
    const ssize_t count = read(fd_, buffer, sizeof buffer);
    if (count <= 0) return false;
    shown_.append(buffer, static_cast<std::size_t>(count));
    return true;
  }

  int fd_ = -1;
  pid_t process_ = 0;
  std::string shown_;  // and not waited for
};

}  // namespace workbench
