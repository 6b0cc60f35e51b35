#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace calculation {

// Finds one text in others, in time that grows with their lengths alone, whatever they hold.
class TextSearch {
 public:
  explicit TextSearch(std::u16string wanted);

  // Where the first occurrence at or after `from` begins; npos where there is none, or where the
  // wanted text is empty.
  std::size_t Find(std::u16string_view text, std::size_t from) const;

  std::size_t length() const { return wanted_.size(); }

 private:
  std::u16string wanted_;
  // For each start of the wanted text, the length of the longest shorter start that it also ends
  // with.
  std::vector<std::uint32_t> borders_;
};

}  // namespace calculation
