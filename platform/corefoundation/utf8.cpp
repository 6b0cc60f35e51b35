#include "platform/corefoundation/utf8.h"

#include <cstdint>
#include <cstring>

#include "platform/corefoundation/characters.h"

namespace encoding {
namespace {

// Writes a character that is not ASCII, and returns the end of what it wrote.
char* PutUtf8(char32_t character, char* out) {
  const auto put = [&out](char32_t byte) { *out++ = static_cast<char>(byte); };
  if (character < 0x800) {
    put(0xC0 | (character >> 6));
    put(0x80 | (character & 0x3F));
  } else if (character < 0x10000) {
    put(0xE0 | (character >> 12));
    put(0x80 | ((character >> 6) & 0x3F));
    put(0x80 | (character & 0x3F));
  } else {
    put(0xF0 | (character >> 18));
    put(0x80 | ((character >> 12) & 0x3F));
    put(0x80 | ((character >> 6) & 0x3F));
    put(0x80 | (character & 0x3F));
  }
  return out;
}

constexpr std::size_t kBlock = 16;

template <class Unit>
bool IsAsciiBlock(const Unit* units) {
  constexpr std::uint64_t kBeyond = sizeof(Unit) == 1 ? 0x8080808080808080 : 0xFF80FF80FF80FF80;
  std::uint64_t words[kBlock * sizeof(Unit) / sizeof(std::uint64_t)];
  std::memcpy(words, units, sizeof words);
  std::uint64_t all = 0;
  for (const std::uint64_t word : words) all |= word;
  return (all & kBeyond) == 0;
}

// Copies units from one form to the other up to the first that is not ASCII, and returns how many.
// A block goes by way of an array of its own, so that the compiler makes vector code of the loop.
template <class From, class To>
std::size_t CopyAscii(const From* from, std::size_t size, To* to) {
  std::size_t copied = 0;
  for (; copied + kBlock <= size && IsAsciiBlock(from + copied); copied += kBlock) {
    To block[kBlock];
    for (std::size_t i = 0; i < kBlock; ++i) block[i] = static_cast<To>(from[copied + i]);
    std::memcpy(to + copied, block, sizeof block);
  }
  for (; copied < size && from[copied] < 0x80; ++copied) to[copied] = static_cast<To>(from[copied]);
  return copied;
}

// How many bytes a character takes whose first byte is `first`, which is not ASCII; 0 if no
// character starts so. 0xC0 and 0xC1 could only start an overlong sequence.
std::size_t Utf8Length(unsigned char first) {
  if (first < 0xC2 || first > 0xF4) return 0;
  return first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
}

// Whether UTF-8 has a character in a sequence of `length` bytes: not if the sequence is overlong
// (fewer bytes would do), stands for a surrogate, or lies beyond Unicode.
bool IsWellFormed(char32_t character, std::size_t length) {
  constexpr char32_t kLeast[] = {0, 0, 0x80, 0x800, 0x10000};
  return character >= kLeast[length] && character <= 0x10FFFF && !IsHighSurrogate(character) &&
         !IsLowSurrogate(character);
}

// The character at `in`, which is not ASCII; `in` moves past it. If the bytes are not UTF-8, it
// moves past one of them and the replacement is returned.
char32_t NextUtf8(const unsigned char*& in, const unsigned char* end) {
  const unsigned char first = *in++;
  const std::size_t length = Utf8Length(first);
  if (length == 0 || static_cast<std::size_t>(end - in) < length - 1) return kReplacement;
  char32_t character = first & (0x7FU >> length);
  for (std::size_t i = 0; i + 1 < length; ++i) {
    if ((in[i] & 0xC0) != 0x80) return kReplacement;
    character = character << 6 | (in[i] & 0x3FU);
  }
  if (!IsWellFormed(character, length)) return kReplacement;
  in += length - 1;
  return character;
}

// The character of two bytes at `bytes`, and below the one of three; 0 if there is none. Most
// scripts are written in these, so they have a way that is faster than NextUtf8.
char16_t CharacterOfTwo(const unsigned char* bytes) {
  const unsigned both = bytes[0] | static_cast<unsigned>(bytes[1]) << 8;
  if ((both & 0xC0E0) != 0x80C0 || (both & 0x1E) == 0) return 0;
  return static_cast<char16_t>((both & 0x1F) << 6 | (both >> 8 & 0x3F));
}

char16_t CharacterOfThree(const unsigned char* bytes) {
  const unsigned all =
      static_cast<unsigned>(bytes[0]) << 16 | static_cast<unsigned>(bytes[1]) << 8 | bytes[2];
  if ((all & 0xF0C0C0) != 0xE08080) return 0;
  const char32_t character = (all >> 4 & 0xF000) | (all >> 2 & 0xFC0) | (all & 0x3F);
  return IsWellFormed(character, 3) ? static_cast<char16_t>(character) : u'\0';
}

}  // namespace

std::size_t EncodeUtf8(std::u16string_view text, char* bytes) {
  char* out = bytes;
  for (std::size_t i = 0; i < text.size();) {
    const std::size_t copied = CopyAscii(text.data() + i, text.size() - i, out);
    i += copied;
    out += copied;
    for (; i < text.size() && text[i] >= 0x80;) out = PutUtf8(NextCharacter(text, i), out);
  }
  return static_cast<std::size_t>(out - bytes);
}

// Characters of one length mostly follow each other, so each length is read until another comes. A
// single unit of ASCII, such as the space between words, is no reason to look for a block of them.
std::size_t DecodeUtf8(std::string_view bytes, char16_t* units) {
  const auto* in = reinterpret_cast<const unsigned char*>(bytes.data());
  const auto* const end = in + bytes.size();
  char16_t* out = units;
  while (in < end) {
    if (*in < 0x80) *out++ = *in++;
    if (in < end && *in < 0x80) {
      const std::size_t copied = CopyAscii(in, static_cast<std::size_t>(end - in), out);
      in += copied;
      out += copied;
    }
    char16_t unit = 0;
    for (; end - in >= 2 && (unit = CharacterOfTwo(in)) != 0; in += 2) *out++ = unit;
    for (; end - in >= 3 && (unit = CharacterOfThree(in)) != 0; in += 3) *out++ = unit;
    if (in < end && *in >= 0x80) out = PutUtf16(NextUtf8(in, end), out);
  }
  return static_cast<std::size_t>(out - units);
}

std::size_t CutUtf8(std::string_view bytes, std::size_t size) {
  std::size_t cut = size;
  while (cut > 0 && size - cut < 3 && (bytes[cut] & 0xC0) == 0x80) --cut;
  return (bytes[cut] & 0xC0) == 0x80 ? size : cut;
}

}  // namespace encoding
