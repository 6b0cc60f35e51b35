#pragma once

// Between UTF-16 and the byte strings of the user's encoding.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/corefoundation/characters.h"

namespace encoding {

enum : std::uint32_t {
  kUtf8 = 1,
  kUserCodeSet = 2,  // any other code set of the user's locale, by iconv
};

#pragma GCC visibility push(default)

// The encoding of the user's locale, one of the two above; read from the environment once and kept.
std::uint32_t SystemEncoding();

// The largest number of bytes that one code unit can need.
std::size_t BytesPerUnit(std::uint32_t encoding);

// Both write without a terminator and return how many units they wrote. `bytes` must hold
// BytesPerUnit for each unit of `text`; `units` must hold one unit for each byte.
std::size_t Encode(std::u16string_view text, std::uint32_t encoding, char* bytes);
std::size_t Decode(std::string_view bytes, std::uint32_t encoding, char16_t* units);

// The same, from and to standard strings; these throw std::bad_alloc.
std::string ToUtf8(std::u16string_view text);
std::u16string ToUtf16(std::string_view bytes, std::uint32_t encoding = kUtf8);

// The length of the longest beginning of `bytes` that is at most `size` bytes long and ends between
// two characters.
std::size_t CutBetweenCharacters(std::string_view bytes, std::size_t size, std::uint32_t encoding);

#pragma GCC visibility pop

}  // namespace encoding
