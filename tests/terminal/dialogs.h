#pragma once

// Calculations that show dialogs, and what the user did with them.

#include <string>
#include <vector>

#include "tests/support/tarvo.h"
#include "tests/terminal/terminal_user.h"

namespace terminal_test {

inline const std::string kNames = R"(TarvoDialog ( "2|Enter the name|OK|Cancel|||First|Last|||" ))";

inline Words Tarvo(const Words& calculations, const Words& options = {}) {
  Words words{TARVO_PROGRAM};
  words.insert(words.end(), options.begin(), options.end());
  words.emplace_back("eval");
  words.insert(words.end(), calculations.begin(), calculations.end());
  return words;
}

inline constexpr const char* kReturn = "\r";
inline constexpr const char* kTab = "\t";
inline constexpr const char* kEscape = "\033";
inline constexpr const char* kUp = "\033OA";
inline constexpr const char* kDown = "\033OB";
inline constexpr const char* kLeft = "\033OD";
inline constexpr const char* kRight = "\033OC";

}  // namespace terminal_test
