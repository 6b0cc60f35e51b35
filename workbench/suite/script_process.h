#pragma once

#include <sys/types.h>

#include <chrono>
#include <cstddef>
#include <optional>
#include <utility>
#include <vector>

#include "workbench/options.h"
#include "workbench/suite/test_case.h"

namespace workbench::suite {

// A file descriptor that is closed in the end.
class OwnDescriptor {
 public:
  explicit OwnDescriptor(int number) : number_(number) {}
  OwnDescriptor(OwnDescriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  OwnDescriptor& operator=(OwnDescriptor&& other) noexcept {
    std::swap(number_, other.number_);
    return *this;
  }
  ~OwnDescriptor();

  int number() const { return number_; }

 private:
  int number_;
};

// A script that runs in a process of its own.
class ScriptProcess {
 public:
  // Begins to run the script of the options. After so many seconds the process is ended; 0: never.
  // Throws Failure if there can be no process.
  ScriptProcess(const Options& options, double time_limit);
  ScriptProcess(ScriptProcess&& other) noexcept = default;
  ScriptProcess& operator=(ScriptProcess&& other) noexcept = default;

  // Ends the process if it still runs.
  ~ScriptProcess();

  // Waits until one of them has ended or has run for too long.
  static void WaitForAny(const std::vector<std::pair<std::size_t, ScriptProcess>>& processes);

  // How it ended; nothing if it still runs.
  std::optional<Outcome> TakeOutcome();

 private:
  using Clock = std::chrono::steady_clock;

  OwnDescriptor output_;
  OwnDescriptor errors_;
  OwnDescriptor dialogs_;
  OwnDescriptor process_{-1};
  pid_t id_ = 0;
  Clock::time_point start_ = Clock::now();
  std::optional<Clock::time_point> end_;  // of its time
};

}  // namespace workbench::suite
