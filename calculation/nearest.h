#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace calculation {

// The name that a slip of the pen turns into `word`, without regard to case. Nothing if more
// than a third of the word would be slips.
std::optional<std::string> Nearest(std::string_view word, const std::vector<std::string>& names);

// "; did you mean NAME?", or nothing.
std::string Suggestion(std::string_view word, const std::vector<std::string>& names);

}  // namespace calculation
