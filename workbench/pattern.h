#pragma once

#include <fnmatch.h>

#include <algorithm>
#include <string>
#include <vector>

namespace workbench {

// Whether the name contains the pattern; if that contains *, ? or [, whether the whole name matches
// it as a pattern of the shell.
inline bool Matches(const std::string& name, const std::string& pattern) {
  if (pattern.find_first_of("*?[") == std::string::npos) {
    return name.find(pattern) != std::string::npos;
  }
  return fnmatch(pattern.c_str(), name.c_str(), 0) == 0;
}

inline bool MatchesAny(const std::string& name, const std::vector<std::string>& patterns) {
  return std::any_of(patterns.begin(), patterns.end(),
                     [&](const std::string& pattern) { return Matches(name, pattern); });
}

}  // namespace workbench
