#pragma once

#include <string>

namespace workbench {

// While it lives, a crash of the plug-in's code, or its ending the program, is told as one sentence
// and ends the program with the status of a bundle that cannot be loaded. A handler that is there
// already, as a sanitizer's, stays. One is alive at a time; another inside it takes its place.
class CrashGuard {
 public:
  // `what` is told before what happened, as in "X.fmplugin: the module crashed while it was
  // loaded".
  explicit CrashGuard(std::string what);
  CrashGuard(const CrashGuard&) = delete;
  CrashGuard& operator=(const CrashGuard&) = delete;
  ~CrashGuard();

 private:
  std::string what_;
  const char* outer_;
};

}  // namespace workbench
