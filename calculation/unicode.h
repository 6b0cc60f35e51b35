#pragma once

// Texts are UTF-16 inside the calculation language and UTF-8 outside it.

#include <string>
#include <string_view>

namespace calculation {

// What is not UTF-8, or a lone surrogate, becomes U+FFFD.
std::u16string ToUtf16(std::string_view utf8);
std::string ToUtf8(std::u16string_view text);

// Code unit by code unit, the same in every locale of the user.
std::u16string Lowercase(std::u16string_view text);
std::u16string Uppercase(std::u16string_view text);

// Negative, 0 or positive, as the first text stands before, beside or behind the second without
// regard to case.
int CompareIgnoringCase(std::u16string_view first, std::u16string_view second);

inline bool IsHighSurrogate(char16_t unit) { return unit >= 0xD800 && unit < 0xDC00; }
inline bool IsLowSurrogate(char16_t unit) { return unit >= 0xDC00 && unit < 0xE000; }

// The character at `position`, a surrogate pair as one.
char32_t CodePointAt(std::u16string_view text, std::size_t position);

}  // namespace calculation
