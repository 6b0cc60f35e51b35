#pragma once

// Texts in their two forms, string objects and byte strings in the system encoding, and what every
// function does with them.

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <type_traits>

#include "platform/corefoundation/CoreFoundation.h"

// The owner of an object that a function makes for its own use; it releases the object.
template <class Object>
using CFOwner = std::unique_ptr<std::remove_pointer_t<Object>, decltype(&CFRelease)>;
template <class Object>
CFOwner<Object> Owned(Object object) {
  return {object, &CFRelease};
}

using ByteString = std::unique_ptr<char, decltype(&std::free)>;

// The shared empty string object.
inline CFStringRef EmptyText() { return CFSTR(""); }

// A text of the dialog state is null before the first initialisation.
inline bool IsEmpty(CFStringRef text) { return text == nullptr || CFStringGetLength(text) == 0; }

inline bool AreEqual(CFStringRef first, CFStringRef second) {
  return CFStringCompare(first, second, 0) == kCFCompareEqualTo;
}

// The bytes that `text` can need at most, with the terminating zero.
CFIndex MaximumByteCount(CFStringRef text);

// `text` as a byte string; null if memory runs out.
ByteString ToByteString(CFStringRef text);

// The parts of `text` between its separators; null if memory runs out.
CFOwner<CFArrayRef> Split(CFStringRef text, CFStringRef separator);

// Item `index` (from 0), borrowed from `items`; the empty text if there are fewer.
CFStringRef ItemAt(CFArrayRef items, CFIndex index);

// The number at the start of `text` by the rule of atoi: white space, a sign, decimal digits; 0
// without digits. Numbers beyond 32 bits are clamped.
std::int32_t ReadNumber(CFStringRef text);
