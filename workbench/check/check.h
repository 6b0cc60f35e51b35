#pragma once

// The host's contract, check by check, against any bundle: what its module exports, what it does on
// FileMaker's messages, what it registers, and what its functions do with every kind of parameter.

#include <chrono>
#include <functional>
#include <string>
#include <string_view>

#include "workbench/failure.h"

namespace workbench {

struct CheckOptions {
  std::string bundle;   // path of its folder
  std::string pattern;  // which checks run: those whose name contains it; if it holds *, ? or [,
                        // those whose whole name matches it as in a shell; all if it is empty
  bool json = false;    // an array of {"check", "result", "message"} instead of lines
  std::chrono::milliseconds time_limit = std::chrono::seconds(10);  // of each check
};

// Runs the checks, each in a process of its own, and hands every result to `print` as soon as it is
// there. Results are passed, failed, crashed, timed out and skipped; crashed and timed out count as
// failed, skipped as neither. Returns kDone, or kWrong if any check failed. Throws Failure if
// there is no bundle or no module in it, or if no check matches the pattern.
Status RunChecks(const CheckOptions& options,
                 const std::function<void(std::string_view text)>& print);

}  // namespace workbench
