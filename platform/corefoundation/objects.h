#pragma once

// How the objects of this layer are laid out; for the layer alone.

#include <cstddef>
#include <string_view>

#include "platform/corefoundation/CoreFoundation.h"

// A whole string is one heap block: this record and its code units behind it. The parts of an array
// are records in the array's block that point into the storage of the string that was split, so
// splitting takes one block and 24 bytes a part.
struct CFArray {
  CFObject object;
  CFStringRef parent;
  CFIndex count;

  CFString* Parts() { return reinterpret_cast<CFString*>(this + 1); }
  const CFString* Parts() const { return reinterpret_cast<const CFString*>(this + 1); }
};
static_assert(sizeof(CFString) == 24);

namespace corefoundation {

// Memory for one object with a count of 1, or null. Give back with DeleteObject.
void* NewObject(CFObject::Kind kind, std::size_t size);
void DeleteObject(void* object);

// The array that a part lives and dies with.
inline CFArray* ArrayOf(const CFString* part) {
  const CFString* first = part - part->object.count;
  return const_cast<CFArray*>(reinterpret_cast<const CFArray*>(first) - 1);
}

inline std::u16string_view View(CFStringRef string) {
  return {string->characters, static_cast<std::size_t>(string->length)};
}

}  // namespace corefoundation
