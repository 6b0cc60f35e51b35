#pragma once

#include <cstdlib>
#include <string>

namespace desktop {

// The environment variable of that name; empty if it is not set.
inline std::string Environment(const char* name) {
  const char* value = std::getenv(name);
  return value ? value : "";
}

}  // namespace desktop
