#include "workbench/user_text.h"

#include <algorithm>

#include "calculation/unicode.h"
#include "platform/corefoundation/encoding.h"
#include "workbench/failure.h"

namespace workbench {
namespace {

using calculation::ToUtf16;
using calculation::ToUtf8;

constexpr char16_t kReplacement = 0xFFFD;

bool IsAscii(std::string_view bytes) {
  return std::all_of(bytes.begin(), bytes.end(),
                     [](char byte) { return static_cast<unsigned char>(byte) < 0x80; });
}

// How many bytes at the beginning are as they would be written.
std::size_t SoundLength(std::string_view bytes, std::string_view back) {
  return static_cast<std::size_t>(
      std::mismatch(bytes.begin(), bytes.end(), back.begin(), back.end()).first - bytes.begin());
}

bool IsUtf8(std::string_view bytes) { return IsAscii(bytes) || ToUtf8(ToUtf16(bytes)) == bytes; }

std::string Encoded(std::u16string_view text, std::uint32_t encoding) {
  std::string bytes(text.size() * encoding::BytesPerUnit(encoding), '\0');
  bytes.resize(encoding::Encode(text, encoding, bytes.data()));
  return bytes;
}

// Up to the first byte that the user's encoding has no character for.
std::u16string DecodedStart(std::string_view bytes) {
  const std::u16string units = encoding::ToUtf16(bytes, encoding::SystemEncoding());
  return units.substr(0, units.find(kReplacement));
}

}  // namespace

std::optional<std::string> FromUser(std::string_view bytes) {
  if (IsUtf8(bytes)) return std::string(bytes);
  if (encoding::SystemEncoding() == encoding::kUtf8) return std::nullopt;
  const std::u16string units = encoding::ToUtf16(bytes, encoding::SystemEncoding());
  if (units.find(kReplacement) != std::u16string::npos) return std::nullopt;
  return ToUtf8(units);
}

std::string FromUser(std::string_view bytes, const std::string& source) {
  if (auto text = FromUser(bytes)) return std::move(*text);
  const std::uint32_t encoding = encoding::SystemEncoding();
  const bool is_utf8 = encoding == encoding::kUtf8;
  const std::size_t place = is_utf8 ? SoundLength(bytes, ToUtf8(ToUtf16(bytes)))
                                    : Encoded(DecodedStart(bytes), encoding).size();
  throw Failure(Status::kUsage, source + ", byte " + std::to_string(place + 1) +
                                    (is_utf8 ? ": this is not UTF-8, which the locale says"
                                             : ": this is neither UTF-8 nor in the locale's code "
                                               "set"));
}

std::string ForUser(std::string_view utf8) {
  const bool stays = IsAscii(utf8) || encoding::SystemEncoding() == encoding::kUtf8;
  if (stays || !IsUtf8(utf8)) return std::string(utf8);
  return Encoded(ToUtf16(utf8), encoding::SystemEncoding());
}

}  // namespace workbench
