#include "platform/corefoundation/encoding.h"

#include <langinfo.h>

#include <clocale>
#include <cstring>
#include <memory>

#include "platform/corefoundation/code_set.h"
#include "platform/corefoundation/utf8.h"

namespace encoding {
namespace {

bool IsUtf8Name(const char* name) {
  return std::strcmp(name, "ANSI_X3.4-1968") == 0 || std::strcmp(name, "UTF-8") == 0;
}

// Null if the user's code set is UTF-8, or none that is known. The locale is asked for by the
// user's variables, in an object of its own: the host's stays as it is.
std::unique_ptr<CodeSet> ReadCodeSet() {
  const locale_t locale = newlocale(LC_CTYPE_MASK, "", nullptr);
  if (locale == nullptr) return nullptr;
  const char* name = nl_langinfo_l(CODESET, locale);
  auto set = IsUtf8Name(name) ? nullptr : std::make_unique<CodeSet>(name);
  freelocale(locale);
  return set && set->IsKnown() ? std::move(set) : nullptr;
}

const CodeSet* UserCodeSet() {
  static const CodeSet* const set = ReadCodeSet().release();  // never destroyed
  return set;
}

}  // namespace

std::uint32_t SystemEncoding() { return UserCodeSet() == nullptr ? kUtf8 : kUserCodeSet; }

std::size_t BytesPerUnit(std::uint32_t encoding) {
  return encoding == kUtf8 ? 3 : CodeSet::kBytesPerUnit;
}

std::size_t Encode(std::u16string_view text, std::uint32_t encoding, char* bytes) {
  return encoding == kUtf8 ? EncodeUtf8(text, bytes) : UserCodeSet()->Encode(text, bytes);
}

std::size_t Decode(std::string_view bytes, std::uint32_t encoding, char16_t* units) {
  return encoding == kUtf8 ? DecodeUtf8(bytes, units) : UserCodeSet()->Decode(bytes, units);
}

std::string ToUtf8(std::u16string_view text) {
  std::string bytes(text.size() * BytesPerUnit(kUtf8), '\0');
  bytes.resize(Encode(text, kUtf8, bytes.data()));
  return bytes;
}

std::u16string ToUtf16(std::string_view bytes, std::uint32_t encoding) {
  std::u16string text(bytes.size(), u'\0');
  text.resize(Decode(bytes, encoding, text.data()));
  return text;
}

std::size_t CutBetweenCharacters(std::string_view bytes, std::size_t size, std::uint32_t encoding) {
  if (bytes.size() <= size) return bytes.size();
  return encoding == kUtf8 ? CutUtf8(bytes, size) : UserCodeSet()->Cut(bytes, size);
}

}  // namespace encoding
