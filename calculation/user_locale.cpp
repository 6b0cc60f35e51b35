#include "calculation/user_locale.h"

#include <cstdlib>
#include <string_view>

namespace calculation {

icu::Locale UserLocale(const char* category) {
  for (const char* variable : {"LC_ALL", category, "LANG"}) {
    const char* const value = std::getenv(variable);
    if (!value || *value == '\0') continue;
    const std::string_view name = value;
    if (name == "POSIX" || name == "C" || name.starts_with("C.")) break;
    return icu::Locale::createCanonical(value);
  }
  return icu::Locale::getUS();
}

}  // namespace calculation
