#pragma once

#include <sys/types.h>

#include <chrono>
#include <cstddef>
#include <functional>
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

// The seconds that a script may run, unless the options say another time.
inline constexpr double kTimeLimit = 10;

// A script that runs in a process of its own, which ends with this one.
class ScriptProcess {
 public:
  using Clock = std::chrono::steady_clock;

  // Begins to run the script of the options, as `run` does. After so many seconds the process is
  // ended; 0: never. Throws Failure if there can be no process.
  ScriptProcess(const Options& options, double time_limit,
                const std::function<int(const Options&)>& run = RunTheScript);
  ScriptProcess(ScriptProcess&& other) noexcept = default;
  ScriptProcess& operator=(ScriptProcess&& other) noexcept = default;

  // Ends the process if it still runs.
  ~ScriptProcess();

  // Waits until one of them has ended or has run for too long.
  static void WaitForAny(const std::vector<std::pair<std::size_t, ScriptProcess>>& processes);

  // Can be read when it has ended.
  int descriptor() const { return process_.number(); }

  // When its time is over; nothing if it never is.
  std::optional<Clock::time_point> end() const { return end_; }

  // How it ended; nothing if it still runs.
  std::optional<Outcome> TakeOutcome();

 private:
  static int RunTheScript(const Options& options);

  OwnDescriptor output_;
  OwnDescriptor errors_;
  OwnDescriptor dialogs_;
  OwnDescriptor process_{-1};
  pid_t id_ = 0;
  Clock::time_point start_ = Clock::now();
  std::optional<Clock::time_point> end_;  // of its time
};

}  // namespace workbench::suite
