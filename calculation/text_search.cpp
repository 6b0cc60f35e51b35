#include "calculation/text_search.h"

#include <unicode/normalizer2.h>
#include <unicode/unistr.h>

#include <algorithm>
#include <cstring>

#include "calculation/interruption.h"
#include "calculation/unicode.h"

namespace calculation {
namespace {

constexpr char kBoundary = '\xFF';

// One character, composed.
void AppendFolded(std::string& bytes, std::u16string_view character, bool fold) {
  if (character.size() == 1 && character[0] < 0x80) {
    bytes += static_cast<char>(fold ? u_tolower(character[0]) : character[0]);
    return;
  }
  UErrorCode status = U_ZERO_ERROR;
  icu::UnicodeString text(character.data(), static_cast<int>(character.size()));
  if (fold) text.foldCase();
  const icu::UnicodeString folded =
      icu::Normalizer2::getNFCInstance(status)->normalize(text, status);
  bytes += ToUtf8(Units(folded));
}

}  // namespace

SearchKey::SearchKey(std::u16string_view text, Case letter_case) {
  Characters characters(text);
  bytes_.reserve(2 * text.size() + 1);
  bytes_ += kBoundary;
  for (std::size_t at = 0, end = 0; at < text.size(); at = end) {
    end = characters.EndOf(at);
    AppendFolded(bytes_, text.substr(at, end - at), letter_case == Case::kIgnored);
    bytes_ += kBoundary;
  }
}

std::size_t SearchKey::Find(const SearchKey& wanted, long occurrence) const {
  if (occurrence < 0) {
    const std::size_t behind = Reversed().Find(wanted.Reversed(), -occurrence);
    const auto characters = [](const std::string& bytes) {
      return static_cast<std::size_t>(std::count(bytes.begin(), bytes.end(), kBoundary)) - 1;
    };
    return behind == kNone ? kNone : characters(bytes_) - behind - characters(wanted.bytes_);
  }
  std::size_t from = 0;
  for (std::size_t found = 0; (found = Next(wanted, from)) != kNone;) {
    if (--occurrence == 0) {
      return static_cast<std::size_t>(
          std::count(bytes_.begin(), bytes_.begin() + static_cast<long>(found), kBoundary));
    }
    from = found + wanted.bytes_.size() - 1;
  }
  return kNone;
}

std::size_t SearchKey::Count(const SearchKey& wanted) const {
  std::size_t count = 0;
  for (std::size_t found, from = 0; (found = Next(wanted, from)) != kNone; ++count) {
    from = found + wanted.bytes_.size() - 1;
  }
  return count;
}

std::u16string SearchKey::Replaced(const SearchKey& wanted, std::u16string_view replacement,
                                   std::size_t longest) const {
  const std::string inserted = ToUtf8(replacement);
  std::string result;
  std::size_t done = 0;
  std::size_t inserted_units = 0;
  for (std::size_t found; (found = Next(wanted, done)) != kNone;) {
    result.append(bytes_, done, found - done);
    result += inserted;
    done = found + wanted.bytes_.size() - 1;
    inserted_units += replacement.size();
    if (inserted_units > longest) break;
  }
  result.append(bytes_, done);
  std::erase(result, kBoundary);
  return ToUtf16(result);
}

SearchKey SearchKey::Reversed() const {
  SearchKey reversed;
  reversed.bytes_.assign(bytes_.rbegin(), bytes_.rend());
  return reversed;
}

std::size_t SearchKey::Next(const SearchKey& wanted, std::size_t from) const {
  CheckInterruption();
  if (wanted.IsEmpty()) return kNone;
  const void* const found = memmem(bytes_.data() + from, bytes_.size() - from, wanted.bytes_.data(),
                                   wanted.bytes_.size());
  if (!found) return kNone;
  return static_cast<std::size_t>(static_cast<const char*>(found) - bytes_.data());
}

}  // namespace calculation
