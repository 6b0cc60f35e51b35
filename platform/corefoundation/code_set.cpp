#include "platform/corefoundation/code_set.h"

#include <bit>
#include <cerrno>
#include <cstring>

#include "platform/corefoundation/characters.h"

namespace encoding {
namespace {

constexpr const char* kUtf16 = std::endian::native == std::endian::little ? "UTF-16LE" : "UTF-16BE";
const iconv_t kNoConverter = reinterpret_cast<iconv_t>(-1);  // NOLINT(performance-no-int-to-ptr)

void Close(iconv_t converter) {
  if (converter != kNoConverter) iconv_close(converter);
}

// What is to be converted, and where to.
struct Buffers {
  char* in;
  std::size_t in_left;
  char* out;
  std::size_t out_left;
};

bool Convert(iconv_t converter, Buffers& buffers) {
  return iconv(converter, &buffers.in, &buffers.in_left, &buffers.out, &buffers.out_left) !=
         static_cast<std::size_t>(-1);
}

void Restart(iconv_t converter) { iconv(converter, nullptr, nullptr, nullptr, nullptr); }

// Writes the character that was held back because a combining mark might follow it, and restarts.
void Flush(iconv_t converter, Buffers& buffers) {
  iconv(converter, nullptr, nullptr, &buffers.out, &buffers.out_left);
}

}  // namespace

CodeSet::CodeSet(const char* name)
    : encoder_(iconv_open(name, kUtf16)), decoder_(iconv_open(kUtf16, name)) {}

CodeSet::~CodeSet() {
  Close(encoder_);
  Close(decoder_);
}

bool CodeSet::IsKnown() const { return encoder_ != kNoConverter && decoder_ != kNoConverter; }

// Character by character: if the code set lacks one, that one alone is replaced.
std::size_t CodeSet::Encode(std::u16string_view text, char* bytes) const {
  Buffers buffers{nullptr, 0, bytes, text.size() * kBytesPerUnit};
  for (std::size_t i = 0; i < text.size();) {
    char16_t units[2];
    buffers.in = reinterpret_cast<char*>(units);
    buffers.in_left = static_cast<std::size_t>(PutUtf16(NextCharacter(text, i), units) - units) * 2;
    if (Convert(encoder_, buffers)) continue;
    *buffers.out++ = '?';
    --buffers.out_left;
  }
  Flush(encoder_, buffers);
  return static_cast<std::size_t>(buffers.out - bytes);
}

std::size_t CodeSet::Decode(std::string_view bytes, char16_t* units) const {
  Restart(decoder_);
  auto* const out = reinterpret_cast<char*>(units);
  Buffers buffers{const_cast<char*>(bytes.data()), bytes.size(), out,
                  bytes.size() * sizeof(char16_t)};
  while (buffers.in_left > 0 && !Convert(decoder_, buffers) && errno != E2BIG) {
    Flush(decoder_, buffers);
    std::memcpy(buffers.out, &kReplacement, sizeof kReplacement);
    buffers.out += sizeof kReplacement;
    buffers.out_left -= sizeof kReplacement;
    ++buffers.in;
    --buffers.in_left;
  }
  Flush(decoder_, buffers);
  return static_cast<std::size_t>(buffers.out - out) / sizeof(char16_t);
}

std::size_t CodeSet::Cut(std::string_view bytes, std::size_t size) const {
  std::size_t cut = 0;
  for (;;) {
    const std::size_t next = cut + CharacterSize(bytes.substr(cut));
    if (next > size) return cut;
    cut = next;
  }
}

// How many bytes the character at the start of `bytes` takes; one byte that is no character counts
// as one.
std::size_t CodeSet::CharacterSize(std::string_view bytes) const {
  for (std::size_t size = 1; size <= bytes.size() && size <= kBytesPerUnit; ++size) {
    Restart(decoder_);
    char16_t units[4];
    Buffers buffers{const_cast<char*>(bytes.data()), size, reinterpret_cast<char*>(units),
                    sizeof units};
    if (Convert(decoder_, buffers)) return size;
  }
  return 1;
}

}  // namespace encoding
