#pragma once

// Runs a check in a process of its own, in which it can do no harm: how that ends is its result.

#include <chrono>
#include <functional>
#include <stdexcept>
#include <string>

namespace workbench::check {

enum class Verdict { kPassed, kFailed, kCrashed, kTimedOut, kSkipped };

struct Result {
  Verdict verdict = Verdict::kPassed;
  std::string message;      // of a check that passed: what it found out
  std::string errors = {};  // what was written to standard error meanwhile
  double seconds = 0;       // how long it took
};

// What a check throws if the plug-in breaks the contract; what() says what was expected and what
// came.
class ContractBroken : public std::runtime_error {
 public:
  using runtime_error::runtime_error;
};

// What a check throws if it does not apply; what() says why.
class NotApplicable : public std::runtime_error {
 public:
  using runtime_error::runtime_error;
};

// Runs `body` in a process of its own, whose output is kept and which has the signals' default
// handling, and ends that process when the time limit has passed. `body` returns the message.
Result RunIsolated(const std::function<std::string()>& body, std::chrono::milliseconds time_limit);

// Runs `body` in this process, for a debugger: nothing ends it, and a crash is this process's.
Result RunHere(const std::function<std::string()>& body);

}  // namespace workbench::check
