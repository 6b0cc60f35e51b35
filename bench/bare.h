#pragma once

// The operations that the functions are made of, done bare: copies by memcpy, scans and conversions
// that the compiler turns into vector code.

#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace bench::bare {

template <class Item>
using Block = std::unique_ptr<Item[], decltype(&std::free)>;

template <class Item>
Block<Item> Allocate(std::size_t count) {
  return {static_cast<Item*>(std::malloc(count * sizeof(Item))), &std::free};
}

// A string object is a block of code units.
struct String {
  Block<char16_t> units{nullptr, &std::free};
  std::size_t length = 0;

  std::u16string_view View() const { return {units.get(), length}; }
};

inline String MakeString(std::u16string_view text) {
  String string{Allocate<char16_t>(text.size() + 1), text.size()};
  std::memcpy(string.units.get(), text.data(), text.size() * sizeof(char16_t));
  return string;
}

inline std::size_t Count(std::u16string_view text, char16_t separator) {
  std::size_t count = 0;
  for (const char16_t unit : text) count += unit == separator ? 1 : 0;
  return count;
}

// The parts, in one block.
inline Block<std::u16string_view> Split(std::u16string_view text, char16_t separator,
                                        std::size_t& count) {
  count = Count(text, separator) + 1;
  auto parts = Allocate<std::u16string_view>(count);
  std::size_t start = 0;
  std::size_t part = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != separator) continue;
    parts[part++] = {text.data() + start, i - start};
    start = i + 1;
  }
  parts[part] = {text.data() + start, text.size() - start};
  return parts;
}

// Of texts that are ASCII, as those of the measurement are, though it is made sure of.
inline Block<char> ToBytes(std::u16string_view text) {
  unsigned all = 0;
  for (const char16_t unit : text) all |= unit;
  if (all >= 0x80) std::abort();
  auto bytes = Allocate<char>(3 * text.size() + 1);
  for (std::size_t i = 0; i < text.size(); ++i) bytes[i] = static_cast<char>(text[i]);
  bytes[text.size()] = '\0';
  return bytes;
}

inline std::u16string ToText(const char* bytes) {
  const std::size_t size = std::strlen(bytes);
  int all = 0;
  for (std::size_t i = 0; i < size; ++i) all |= bytes[i];
  if (all < 0) std::abort();
  return {bytes, bytes + size};
}

inline int ReadNumber(std::u16string_view text) {
  int number = 0;
  for (std::size_t i = 0; i < text.size() && i < 9 && text[i] >= u'0' && text[i] <= u'9'; ++i) {
    number = number * 10 + (text[i] - u'0');
  }
  return number;
}

}  // namespace bench::bare
