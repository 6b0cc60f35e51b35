#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>

#include "platform/corefoundation/CoreFoundation.h"
#include "platform/corefoundation/encoding.h"
#include "platform/corefoundation/objects.h"

namespace {

using corefoundation::View;

using Bytes = std::unique_ptr<char, decltype(&std::free)>;

// A new string with room for `length` code units, which the caller fills at `characters`; or null.
CFString* NewString(CFIndex length, UniChar*& characters) {
  const auto size = sizeof(CFString) + static_cast<std::size_t>(length) * sizeof(UniChar);
  auto* string = static_cast<CFString*>(corefoundation::NewObject(CFObject::Kind::kString, size));
  if (string == nullptr) return nullptr;
  characters = reinterpret_cast<UniChar*>(string + 1);
  string->characters = characters;
  string->length = length;
  return string;
}

Bytes CopyAsUtf8(CFStringRef string) {
  const auto capacity = CFStringGetMaximumSizeForEncoding(string->length, encoding::kUtf8) + 1;
  Bytes bytes(static_cast<char*>(std::malloc(static_cast<std::size_t>(capacity))), &std::free);
  if (bytes) CFStringGetCString(string, bytes.get(), capacity, encoding::kUtf8);
  return bytes;
}

CFStringRef CreateFromUtf8(const char* bytes) {
  const std::size_t size = std::strlen(bytes);
  UniChar* characters = nullptr;
  CFString* string = NewString(static_cast<CFIndex>(size), characters);
  if (string == nullptr) return nullptr;
  string->length =
      static_cast<CFIndex>(encoding::Decode({bytes, size}, encoding::kUtf8, characters));
  return string;
}

// `format` and its arguments as bytes, or null.
Bytes Format(const char* format, std::va_list arguments) {
  std::va_list again;
  va_copy(again, arguments);
  const int size = std::vsnprintf(nullptr, 0, format, arguments);
  Bytes bytes(
      size < 0 ? nullptr : static_cast<char*>(std::malloc(static_cast<std::size_t>(size) + 1)),
      &std::free);
  if (bytes) std::vsnprintf(bytes.get(), static_cast<std::size_t>(size) + 1, format, again);
  va_end(again);
  return bytes;
}

}  // namespace

CFStringRef CFStringCreateWithCharacters(CFAllocatorRef /*allocator*/, const UniChar* characters,
                                         CFIndex length) {
  UniChar* storage = nullptr;
  CFString* string = NewString(length, storage);
  if (string != nullptr) std::copy_n(characters, length, storage);
  return string;
}

CFStringRef CFStringCreateWithFormat(CFAllocatorRef /*allocator*/, const void* /*options*/,
                                     CFStringRef format, ...) {
  const Bytes format_bytes = CopyAsUtf8(format);
  if (!format_bytes) return nullptr;
  std::va_list arguments;
  va_start(arguments, format);
  const Bytes bytes = Format(format_bytes.get(), arguments);
  va_end(arguments);
  return bytes ? CreateFromUtf8(bytes.get()) : nullptr;
}

CFStringRef CFStringCreateCopy(CFAllocatorRef allocator, CFStringRef string) {
  if (string->object.kind == CFObject::Kind::kPart) {
    const CFStringRef parent = corefoundation::ArrayOf(string)->parent;
    if (parent->length == string->length) return CFStringCreateCopy(allocator, parent);
    return CFStringCreateWithCharacters(allocator, string->characters, string->length);
  }
  CFRetain(string);
  return string;
}

CFIndex CFStringGetLength(CFStringRef string) { return string->length; }

void CFStringGetCharacters(CFStringRef string, CFRange range, UniChar* buffer) {
  std::copy_n(string->characters + range.location, range.length, buffer);
}

CFComparisonResult CFStringCompare(CFStringRef first, CFStringRef second,
                                   CFOptionFlags /*options*/) {
  const int order = View(first).compare(View(second));
  return order < 0 ? kCFCompareLessThan : order > 0 ? kCFCompareGreaterThan : kCFCompareEqualTo;
}

CFStringEncoding CFStringGetSystemEncoding() { return encoding::SystemEncoding(); }

CFIndex CFStringGetMaximumSizeForEncoding(CFIndex length, CFStringEncoding encoding) {
  return length * static_cast<CFIndex>(encoding::BytesPerUnit(encoding));
}

Boolean CFStringGetCString(CFStringRef string, char* buffer, CFIndex size,
                           CFStringEncoding encoding) {
  if (size < 1) return 0;
  buffer[0] = '\0';
  const CFIndex maximum = CFStringGetMaximumSizeForEncoding(string->length, encoding);
  if (maximum < size) {
    buffer[encoding::Encode(View(string), encoding, buffer)] = '\0';
    return 1;
  }
  // The buffer is smaller than the worst case: find out in one that is not.
  const Bytes whole(static_cast<char*>(std::malloc(static_cast<std::size_t>(maximum))), &std::free);
  if (!whole) return 0;
  const std::size_t length = encoding::Encode(View(string), encoding, whole.get());
  if (length >= static_cast<std::size_t>(size)) return 0;
  std::memcpy(buffer, whole.get(), length);
  buffer[length] = '\0';
  return 1;
}
