#include "platform/corefoundation/strings_table.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <utility>

#include "platform/corefoundation/encoding.h"

namespace corefoundation {
namespace {

std::u16string DecodeUtf16(std::string_view bytes, bool big_endian) {
  std::u16string text(bytes.size() / 2, u'\0');
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto first = static_cast<unsigned char>(bytes[2 * i]);
    const auto second = static_cast<unsigned char>(bytes[2 * i + 1]);
    text[i] = static_cast<char16_t>(big_endian ? first << 8 | second : second << 8 | first);
  }
  return text;
}

std::u16string DecodeFile(std::string_view bytes) {
  if (bytes.starts_with("\xFF\xFE")) return DecodeUtf16(bytes.substr(2), false);
  if (bytes.starts_with("\xFE\xFF")) return DecodeUtf16(bytes.substr(2), true);
  if (bytes.starts_with("\xEF\xBB\xBF")) bytes.remove_prefix(3);
  return encoding::ToUtf16(bytes);
}

bool IsSpace(char16_t unit) { return unit == u' ' || (unit >= u'\t' && unit <= u'\r'); }

bool IsBare(char16_t unit) {
  return (unit >= u'0' && unit <= u'9') || (unit >= u'A' && unit <= u'Z') ||
         (unit >= u'a' && unit <= u'z') || unit == u'_' || unit == u'.' || unit == u'-';
}

int HexDigit(char16_t unit) {
  if (unit >= u'0' && unit <= u'9') return unit - u'0';
  if (unit >= u'A' && unit <= u'F') return unit - u'A' + 10;
  if (unit >= u'a' && unit <= u'f') return unit - u'a' + 10;
  return -1;
}

class Reader {
 public:
  explicit Reader(std::u16string_view text) : rest_(text) {}

  StringsTable ReadTable() {
    StringsTable table;
    for (SkipBlanks(); !rest_.empty(); SkipBlanks()) {
      auto key = ReadWord();
      if (!key || !Skip(u'=')) break;
      auto value = ReadWord();
      if (!value || !Skip(u';')) break;
      table.emplace(std::move(*key), std::move(*value));
    }
    return table;
  }

 private:
  // White space and comments. A comment without an end takes the rest.
  void SkipBlanks() {
    for (;;) {
      rest_.remove_prefix(static_cast<std::size_t>(
          std::find_if_not(rest_.begin(), rest_.end(), IsSpace) - rest_.begin()));
      if (rest_.starts_with(u"//")) {
        rest_.remove_prefix(std::min(rest_.find_first_of(u"\r\n"), rest_.size()));
      } else if (rest_.starts_with(u"/*")) {
        const std::size_t end = rest_.find(u"*/", 2);
        rest_.remove_prefix(end == std::u16string_view::npos ? rest_.size() : end + 2);
      } else {
        return;
      }
    }
  }

  bool Skip(char16_t sign) {
    SkipBlanks();
    if (!rest_.starts_with(sign)) return false;
    rest_.remove_prefix(1);
    return true;
  }

  std::optional<std::u16string> ReadWord() {
    SkipBlanks();
    return rest_.starts_with(u'"') ? ReadQuoted() : ReadBare();
  }

  std::optional<std::u16string> ReadBare() {
    const auto end = std::find_if_not(rest_.begin(), rest_.end(), IsBare);
    std::u16string word(rest_.begin(), end);
    rest_.remove_prefix(word.size());
    if (word.empty()) return std::nullopt;
    return word;
  }

  std::optional<std::u16string> ReadQuoted() {
    std::u16string word;
    rest_.remove_prefix(1);
    while (!rest_.empty()) {
      const char16_t unit = Take();
      if (unit == u'"') return word;
      word += unit == u'\\' && !rest_.empty() ? ReadEscape() : unit;
    }
    return std::nullopt;
  }

  char16_t ReadEscape() {
    if (rest_[0] >= u'0' && rest_[0] <= u'7') return ReadDigits(3, 8);
    const char16_t unit = Take();
    switch (unit) {
      case u'n':
        return u'\n';
      case u'r':
        return u'\r';
      case u't':
        return u'\t';
      case u'U':
      case u'u':
        return ReadDigits(4, 16);
      default:
        return unit;
    }
  }

  char16_t ReadDigits(int most, int base) {
    int number = 0;
    for (int i = 0; i < most && !rest_.empty(); ++i) {
      const int digit = HexDigit(rest_[0]);
      if (digit < 0 || digit >= base) break;
      number = number * base + digit;
      Take();
    }
    return static_cast<char16_t>(number);
  }

  char16_t Take() {
    const char16_t unit = rest_[0];
    rest_.remove_prefix(1);
    return unit;
  }

  std::u16string_view rest_;
};

}  // namespace

StringsTable ParseStringsTable(std::string_view bytes) {
  const std::u16string text = DecodeFile(bytes);
  return Reader(text).ReadTable();
}

}  // namespace corefoundation
