#include <bit>
#include <cstddef>
#include <cstdint>
#include <string_view>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

#include "platform/corefoundation/CoreFoundation.h"
#include "platform/corefoundation/objects.h"

namespace {

using corefoundation::View;

// Calls `found` with the position of every occurrence of `separator`, from left to right, until it
// returns false.
template <class Found>
void ForEachOccurrence(std::u16string_view text, std::u16string_view separator, Found found) {
  for (std::size_t at = text.find(separator); at != std::u16string_view::npos && found(at);
       at = text.find(separator, at + separator.size())) {
  }
}

// For a separator of one unit, such as the plug-in uses, a text is searched in steps of kStep
// units. Matches returns one bit for each unit of a step that is `wanted`; the bits of neighbouring
// units are kBits apart, that of the first unit is the lowest.
#ifdef __SSE2__
constexpr std::size_t kStep = 8;
constexpr unsigned kBits = 2;

unsigned Matches(const char16_t* units, char16_t wanted) {
  const __m128i step = _mm_loadu_si128(reinterpret_cast<const __m128i*>(units));
  const __m128i equal = _mm_cmpeq_epi16(step, _mm_set1_epi16(static_cast<std::int16_t>(wanted)));
  return static_cast<unsigned>(_mm_movemask_epi8(equal)) & 0x5555;
}
#else
constexpr std::size_t kStep = 1;
constexpr unsigned kBits = 1;

unsigned Matches(const char16_t* units, char16_t wanted) { return *units == wanted ? 1 : 0; }
#endif

template <class Found>
void ForEachOccurrence(std::u16string_view text, char16_t separator, Found found) {
  std::size_t i = 0;
  for (; i + kStep <= text.size(); i += kStep) {
    for (auto left = Matches(text.data() + i, separator); left != 0; left &= left - 1) {
      if (!found(i + static_cast<unsigned>(std::countr_zero(left)) / kBits)) return;
    }
  }
  for (; i < text.size(); ++i) {
    if (text[i] == separator && !found(i)) return;
  }
}

std::size_t CountParts(std::u16string_view text, std::u16string_view separator) {
  if (separator.empty()) return 1;
  std::size_t parts = 1;
  if (separator.size() == 1) {  // a loop that the compiler makes vector code of
    for (const char16_t unit : text) parts += unit == separator[0] ? 1 : 0;
  } else {
    ForEachOccurrence(text, separator, [&](std::size_t) { return ++parts; });
  }
  return parts;
}

// Writes the parts, of which there are `count`. Each gets its number, by which it finds its array.
// The search ends at the last separator, without a look at the text behind it.
void FillParts(std::u16string_view text, std::u16string_view separator, CFString* parts,
               std::size_t count) {
  std::uint32_t part = 0;
  std::size_t start = 0;
  const auto end_part = [&](std::size_t end) {
    parts[part] = {
        {CFObject::Kind::kPart, part}, text.data() + start, static_cast<CFIndex>(end - start)};
    start = end + separator.size();
    return ++part + 1 < count;
  };
  if (count > 1 && separator.size() == 1) {
    ForEachOccurrence(text, separator[0], end_part);
  } else if (count > 1) {
    ForEachOccurrence(text, separator, end_part);
  }
  end_part(text.size());
}

}  // namespace

CFArrayRef CFStringCreateArrayBySeparatingStrings(CFAllocatorRef /*allocator*/, CFStringRef string,
                                                  CFStringRef separator) {
  const std::size_t count = CountParts(View(string), View(separator));
  auto* array = static_cast<CFArray*>(corefoundation::NewObject(
      CFObject::Kind::kArray, sizeof(CFArray) + count * sizeof(CFString)));
  if (array == nullptr) return nullptr;
  array->parent = static_cast<CFStringRef>(CFRetain(string));
  array->count = static_cast<CFIndex>(count);
  FillParts(View(string), View(separator), array->Parts(), count);
  return array;
}

CFIndex CFArrayGetCount(CFArrayRef array) { return array->count; }

const void* CFArrayGetValueAtIndex(CFArrayRef array, CFIndex index) {
  return index >= 0 && index < array->count ? array->Parts() + index : nullptr;
}
