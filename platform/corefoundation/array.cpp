#include "platform/corefoundation/objects.h"

namespace {

using corefoundation::View;

std::size_t CountParts(std::u16string_view text, std::u16string_view separator) {
  std::size_t parts = 1;
  if (separator.empty()) return parts;
  for (std::size_t at = text.find(separator); at != std::u16string_view::npos;
       at = text.find(separator, at + separator.size())) {
    ++parts;
  }
  return parts;
}

// Parts are numbered so that each finds its array.
void FillParts(std::u16string_view text, std::u16string_view separator, CFString* parts,
               std::size_t count) {
  std::size_t start = 0;
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t end = i + 1 < count ? text.find(separator, start) : text.size();
    parts[i] = {{CFObject::Kind::kPart, static_cast<std::uint32_t>(i)},
                text.data() + start,
                static_cast<CFIndex>(end - start)};
    start = end + separator.size();
  }
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
