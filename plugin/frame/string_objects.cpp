#include "plugin/frame/string_objects.h"

#include <algorithm>
#include <limits>

namespace {

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
  return Owned(CFStringCreateArrayBySeparatingStrings(kCFAllocatorDefault, text, separator));
}

CFStringRef ItemAt(CFArrayRef items, CFIndex index) {
  if (index >= CFArrayGetCount(items)) return EmptyText();
  return static_cast<CFStringRef>(CFArrayGetValueAtIndex(items, index));
}

// The number is read from the code units themselves, without a conversion to bytes. They are
// fetched in pieces, and the first one holds any usual number.
std::int32_t ReadNumber(CFStringRef text) {
  constexpr CFIndex kPiece = 32;
  const CFIndex length = CFStringGetLength(text);
  UniChar piece[kPiece];
  CFIndex fetched = 0;
  CFIndex at = 0;
  // The unit at `at`; 0 behind the end.
  const auto unit = [&]() -> UniChar {
    if (at == fetched) {
      const CFIndex size = std::min(kPiece, length - at);
      if (size == 0) return 0;
      CFStringGetCharacters(text, {at, size}, piece);
      fetched += size;
    }
    return piece[at % kPiece];
  };
  while (IsWhiteSpace(unit())) ++at;
  const UniChar sign = unit();
  if (sign == u'-' || sign == u'+') ++at;
  constexpr std::int64_t kBeyond = std::int64_t{1} << 32;
  std::int64_t number = 0;
  for (; IsDigit(unit()) && number < kBeyond; ++at) number = number * 10 + (unit() - u'0');
  using Limits = std::numeric_limits<std::int32_t>;
  return static_cast<std::int32_t>(
      std::clamp<std::int64_t>(sign == u'-' ? -number : number, Limits::min(), Limits::max()));
}
