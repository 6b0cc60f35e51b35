#pragma once

#include <string>
#include <string_view>

namespace calculation {

// What a text is searched by: its characters, as people count them, each behind a byte that no
// character holds, composed and in UTF-8. So no search finds half a character, and composed and
// decomposed forms are alike. Searching takes time that grows with the lengths alone.
class SearchKey {
 public:
  enum class Case { kMatters, kIgnored };

  SearchKey(std::u16string_view text, Case letter_case);

  bool IsEmpty() const { return bytes_.size() == 1; }

  // The number of characters before the occurrence number `occurrence` of `wanted`, or before the
  // last but so many if the number is negative. Nothing that overlaps another counts.
  static constexpr std::size_t kNone = std::string::npos;
  std::size_t Find(const SearchKey& wanted, long occurrence) const;
  std::size_t Count(const SearchKey& wanted) const;

  // The text with `replacement` in place of what is wanted, but for what would be longer than
  // `longest` code units: that comes back unfinished, and too long.
  std::u16string Replaced(const SearchKey& wanted, std::u16string_view replacement,
                          std::size_t longest) const;

 private:
  SearchKey() = default;

  SearchKey Reversed() const;
  std::size_t Next(const SearchKey& wanted, std::size_t from) const;

  std::string bytes_;
};

}  // namespace calculation
