#pragma once

// Characters in UTF-16; for this layer alone.

#include <cstddef>
#include <string_view>

namespace encoding {

// What bytes that are not a character of the encoding are decoded to, and a lone surrogate encoded
// as.
inline constexpr char16_t kReplacement = 0xFFFD;

constexpr bool IsHighSurrogate(char32_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
constexpr bool IsLowSurrogate(char32_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

// The character at `position`, which moves past it.
constexpr char32_t NextCharacter(std::u16string_view text, std::size_t& position) {
  const char32_t unit = text[position++];
  if (IsHighSurrogate(unit) && position < text.size() && IsLowSurrogate(text[position])) {
    return 0x10000 + ((unit - 0xD800) << 10) + (text[position++] - 0xDC00U);
  }
  return IsHighSurrogate(unit) || IsLowSurrogate(unit) ? char32_t{kReplacement} : unit;
}

// Writes one or two units and returns the end of them.
constexpr char16_t* PutUtf16(char32_t character, char16_t* out) {
  if (character < 0x10000) {
    *out++ = static_cast<char16_t>(character);
  } else {
    *out++ = static_cast<char16_t>(0xD800 + ((character - 0x10000) >> 10));
    *out++ = static_cast<char16_t>(0xDC00 + ((character - 0x10000) & 0x3FF));
  }
  return out;
}

}  // namespace encoding
