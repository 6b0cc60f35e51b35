#include "host/text.h"

#include <algorithm>
#include <limits>

namespace {

// The unit at `index`, 0 behind the end.
UniChar UnitAt(CFStringRef text, CFIndex index) {
  UniChar unit = 0;
  if (index < CFStringGetLength(text)) CFStringGetCharacters(text, {index, 1}, &unit);
  return unit;
}

bool IsWhiteSpace(UniChar unit) { return unit == u' ' || (unit >= u'\t' && unit <= u'\r'); }

bool IsDigit(UniChar unit) { return unit >= u'0' && unit <= u'9'; }

}  // namespace

CFIndex MaximumByteCount(CFStringRef text) {
  return CFStringGetMaximumSizeForEncoding(CFStringGetLength(text), CFStringGetSystemEncoding()) +
         1;
}

ByteString ToByteString(CFStringRef text) {
  const CFIndex size = MaximumByteCount(text);
  ByteString bytes(static_cast<char*>(std::malloc(static_cast<std::size_t>(size))), &std::free);
  if (bytes) CFStringGetCString(text, bytes.get(), size, CFStringGetSystemEncoding());
  return bytes;
}

CFOwner<CFArrayRef> Split(CFStringRef text, CFStringRef separator) {
  return Own(CFStringCreateArrayBySeparatingStrings(kCFAllocatorDefault, text, separator));
}

CFStringRef ItemAt(CFArrayRef items, CFIndex index) {
  if (index >= CFArrayGetCount(items)) return EmptyText();
  return static_cast<CFStringRef>(CFArrayGetValueAtIndex(items, index));
}

// Digits and signs are the same in every encoding, so the number is read where it stands.
std::int32_t ReadNumber(CFStringRef text) {
  CFIndex at = 0;
  while (IsWhiteSpace(UnitAt(text, at))) ++at;
  const UniChar sign = UnitAt(text, at);
  if (sign == u'-' || sign == u'+') ++at;
  constexpr std::int64_t kBeyond = std::int64_t{1} << 32;
  std::int64_t number = 0;
  for (UniChar unit = UnitAt(text, at); IsDigit(unit) && number < kBeyond;
       unit = UnitAt(text, at)) {
    number = number * 10 + (unit - u'0');
    ++at;
  }
  using Limits = std::numeric_limits<std::int32_t>;
  return static_cast<std::int32_t>(
      std::clamp<std::int64_t>(sign == u'-' ? -number : number, Limits::min(), Limits::max()));
}
