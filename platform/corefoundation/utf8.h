#pragma once

// Between UTF-16 and UTF-8; for this layer alone.

#include <cstddef>
#include <string_view>

namespace encoding {

// Both write without a terminator and return how many units they wrote. `bytes` must hold three for
// each unit of `text`; `units` must hold one for each byte. A lone surrogate and a byte that is not
// UTF-8 become U+FFFD.
std::size_t EncodeUtf8(std::u16string_view text, char* bytes);
std::size_t DecodeUtf8(std::string_view bytes, char16_t* units);

// The length of the longest start of `bytes`, which are more than `size`, that is at most `size`
// long and ends between characters.
std::size_t CutUtf8(std::string_view bytes, std::size_t size);

}  // namespace encoding
