#pragma once

#include <iconv.h>

#include <cstddef>
#include <string_view>

namespace encoding {

// A code set other than UTF-8, converted from and to UTF-16 by iconv. For this layer alone; its
// converters are not to be used by two threads at a time.
class CodeSet {
 public:
  // The largest number of bytes that one UTF-16 unit can need.
  static constexpr std::size_t kBytesPerUnit = 8;

  // The code set by the name that iconv has for it.
  explicit CodeSet(const char* name);
  CodeSet(const CodeSet&) = delete;
  CodeSet& operator=(const CodeSet&) = delete;
  ~CodeSet();

  // False if iconv does not know it; nothing else may be called then.
  bool IsKnown() const;

  // Both write without a terminator and return how many units they wrote. `bytes` must hold
  // kBytesPerUnit for each unit of `text`, `units` one for each byte. A character that the code set
  // lacks becomes "?", a byte that is no character U+FFFD.
  std::size_t Encode(std::u16string_view text, char* bytes) const;
  std::size_t Decode(std::string_view bytes, char16_t* units) const;

  // The length of the longest start of `bytes` that is at most `size` long and ends between
  // characters.
  std::size_t Cut(std::string_view bytes, std::size_t size) const;

 private:
  std::size_t CharacterSize(std::string_view bytes) const;

  iconv_t encoder_;
  iconv_t decoder_;
};

}  // namespace encoding
