#pragma once

// The host's contract, check by check, against any bundle: what its module exports, what it does on
// FileMaker's messages, what it registers, and what its functions do with every kind of parameter.

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "workbench/failure.h"

namespace workbench {

struct CheckOptions {
  std::vector<std::string> bundles;  // paths of their folders

  // Which checks run: those whose name matches one of `only`, all if it is empty, and none of
  // `exclude`. A name matches a pattern that it contains; one that holds *, ? or [ it matches as a
  // whole, as in a shell.
  std::vector<std::string> only = {};
  std::vector<std::string> exclude = {};

  bool json = false;         // an array of objects instead of lines
  bool failed_only = false;  // leaves out what passed or was skipped
  bool in_process = false;   // in this process, for a debugger: a crash is the program's
  std::function<void(std::string_view xml)> junit = nullptr;  // takes the results as JUnit XML
  std::chrono::milliseconds time_limit = std::chrono::seconds(10);  // of each check
};

// Runs the checks, each in a process of its own, and hands every result to `print` as soon as it is
// there. Results are passed, failed, crashed, timed out and skipped; crashed and timed out count as
// failed, skipped as neither. A check is skipped if one that it builds on has not passed. Returns
// kDone, or kWrong if any check failed. Throws Failure if there is no bundle or no module in it, or
// if no check matches.
Status RunChecks(const CheckOptions& options,
                 const std::function<void(std::string_view text)>& print);

// The names of the checks that would run, in their order.
std::vector<std::string> CheckNames(const CheckOptions& options);

// What a check holds a plug-in to and why, on several lines. Throws Failure (usage) if there is no
// such check, with the nearest.
std::string ExplainCheck(const std::string& name);

}  // namespace workbench
