#include "calculation/unicode.h"

#include <algorithm>
#include <clocale>
#include <cwctype>

#include "platform/corefoundation/encoding.h"

namespace calculation {
namespace {

// Knows the case of every letter; null where the system lacks it, and then ASCII must do.
locale_t UnicodeLocale() {
  static const locale_t locale = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
  return locale;
}

char16_t MapUnit(char16_t unit, wint_t (*map)(wint_t, locale_t)) {
  const locale_t locale = UnicodeLocale();
  const wint_t mapped = locale ? map(unit, locale) : unit;
  return mapped <= 0xFFFF ? static_cast<char16_t>(mapped) : unit;
}

char16_t LowercaseUnit(char16_t unit) {
  if (unit < 0x80) return unit >= u'A' && unit <= u'Z' ? char16_t(unit + 0x20) : unit;
  return MapUnit(unit, towlower_l);
}

char16_t UppercaseUnit(char16_t unit) {
  if (unit < 0x80) return unit >= u'a' && unit <= u'z' ? char16_t(unit - 0x20) : unit;
  return MapUnit(unit, towupper_l);
}

}  // namespace

std::u16string ToUtf16(std::string_view utf8) {
  std::u16string text(utf8.size(), u'\0');
  text.resize(encoding::Decode(utf8, encoding::kUtf8, text.data()));
  return text;
}

std::string ToUtf8(std::u16string_view text) {
  std::string bytes(text.size() * encoding::BytesPerUnit(encoding::kUtf8), '\0');
  bytes.resize(encoding::Encode(text, encoding::kUtf8, bytes.data()));
  return bytes;
}

std::u16string Lowercase(std::u16string_view text) {
  std::u16string lower(text);
  std::transform(lower.begin(), lower.end(), lower.begin(), LowercaseUnit);
  return lower;
}

std::u16string Uppercase(std::u16string_view text) {
  std::u16string upper(text);
  std::transform(upper.begin(), upper.end(), upper.begin(), UppercaseUnit);
  return upper;
}

int CompareIgnoringCase(std::u16string_view first, std::u16string_view second) {
  const std::size_t common = std::min(first.size(), second.size());
  for (std::size_t i = 0; i < common; ++i) {
    const char16_t a = LowercaseUnit(first[i]);
    const char16_t b = LowercaseUnit(second[i]);
    if (a != b) return a < b ? -1 : 1;
  }
  if (first.size() == second.size()) return 0;
  return first.size() < second.size() ? -1 : 1;
}

char32_t CodePointAt(std::u16string_view text, std::size_t position) {
  const char16_t unit = text[position];
  if (!IsHighSurrogate(unit) || position + 1 == text.size() ||
      !IsLowSurrogate(text[position + 1])) {
    return unit;
  }
  return 0x10000 + ((char32_t{unit} - 0xD800) << 10) + (char32_t{text[position + 1]} - 0xDC00);
}

}  // namespace calculation
