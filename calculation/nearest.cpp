#include "calculation/nearest.h"

#include <algorithm>

#include "calculation/unicode.h"

namespace calculation {
namespace {

// How many characters must be typed anew, left out, added or swapped with their neighbours.
std::size_t Distance(std::u16string_view from, std::u16string_view to) {
  std::vector<std::vector<std::size_t>> cost(from.size() + 1,
                                             std::vector<std::size_t>(to.size() + 1));
  for (std::size_t i = 0; i <= from.size(); ++i) {
    for (std::size_t j = 0; j <= to.size(); ++j) {
      if (i == 0 || j == 0) {
        cost[i][j] = i + j;
        continue;
      }
      const std::size_t change = from[i - 1] == to[j - 1] ? 0 : 1;
      cost[i][j] = std::min({cost[i - 1][j] + 1, cost[i][j - 1] + 1, cost[i - 1][j - 1] + change});
      if (i > 1 && j > 1 && from[i - 1] == to[j - 2] && from[i - 2] == to[j - 1]) {
        cost[i][j] = std::min(cost[i][j], cost[i - 2][j - 2] + 1);
      }
    }
  }
  return cost[from.size()][to.size()];
}

}  // namespace

std::string Suggestion(std::string_view word, const std::vector<std::string>& names) {
  const std::u16string wanted = Lowercase(ToUtf16(word));
  // The first distance that is too far; one slip is near enough for the shortest of names.
  std::size_t nearest = std::max<std::size_t>(wanted.size() / 3, 1) + 1;
  std::string suggestion;
  for (const std::string& name : names) {
    const std::u16string candidate = Lowercase(ToUtf16(name));
    const std::size_t longer = std::max(wanted.size(), candidate.size());
    const std::size_t shorter = std::min(wanted.size(), candidate.size());
    // A name of which half or more is typed lacks its end, which is one slip.
    const bool is_start = candidate.starts_with(wanted) && 2 * shorter >= longer;
    if (longer - shorter >= nearest && !is_start) continue;
    const std::size_t distance = is_start ? 1 : Distance(wanted, candidate);
    if (distance >= std::min(nearest, longer)) continue;
    nearest = distance;
    suggestion = "; did you mean " + name + "?";
  }
  return suggestion;
}

}  // namespace calculation
