#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace calculation {

// "; did you mean NAME?", with the name that a slip of the pen turns into `word`, without regard to
// case. Nothing if more than a third of the word would be slips.
std::string Suggestion(std::string_view word, const std::vector<std::string>& names);

}  // namespace calculation
