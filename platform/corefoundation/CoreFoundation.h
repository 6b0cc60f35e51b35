#pragma once

// The part of CoreFoundation that the plug-in stands on: immutable Unicode strings, arrays of them
// as splitting produces them, the user's encoding, and a bundle's localised strings.
//
// Ownership: an operation with Create or Copy in its name hands out a reference that the caller
// gives back with CFRelease; one with Get lends a reference that lives as long as what it was got
// from. Memory: if memory runs out, an operation returns null and changes nothing. Nothing here
// throws. Lengths and positions are counted in UTF-16 code units. Everything runs on the host's
// main thread.

#include <cstddef>
#include <cstdint>

#pragma GCC visibility push(default)

using Boolean = unsigned char;
using UniChar = char16_t;
using CFIndex = std::ptrdiff_t;
using CFOptionFlags = std::uintptr_t;
using CFStringEncoding = std::uint32_t;

enum CFComparisonResult : int {
  kCFCompareLessThan = -1,
  kCFCompareEqualTo = 0,
  kCFCompareGreaterThan = 1,
};

struct CFRange {
  CFIndex location;
  CFIndex length;
};

// The first member of every object. It and CFString below are public only because CFSTR needs them.
struct CFObject {
  enum class Kind : std::uint32_t { kLiteral, kString, kPart, kArray, kBundle };

  Kind kind;
  std::uint32_t count;  // references; of a part, its place in the array that owns it
};

struct CFString {
  CFObject object;
  const UniChar* characters;
  CFIndex length;
};

struct CFArray;
struct CFBundle;

using CFTypeRef = const void*;
using CFStringRef = const CFString*;
using CFArrayRef = const CFArray*;
using CFBundleRef = CFBundle*;
using CFAllocatorRef = const void*;

inline constexpr CFAllocatorRef kCFAllocatorDefault = nullptr;

// A constant string from a literal. It needs no memory and cannot be released.
#define CFSTR(text)                                                                       \
  ([]() noexcept -> CFStringRef {                                                         \
    static constexpr CFString literal{                                                    \
        {CFObject::Kind::kLiteral, 0}, u"" text, sizeof(u"" text) / sizeof(UniChar) - 1}; \
    return &literal;                                                                      \
  }())

extern "C" {

// Any object, null too. CFRetain returns what it was given.
CFTypeRef CFRetain(CFTypeRef object);
void CFRelease(CFTypeRef object);

// A string that holds a copy of `length` code units.
CFStringRef CFStringCreateWithCharacters(CFAllocatorRef allocator, const UniChar* characters,
                                         CFIndex length);

// `format` as printf takes it; `options` is null.
CFStringRef CFStringCreateWithFormat(CFAllocatorRef allocator, const void* options,
                                     CFStringRef format, ...);

// A string equal to `string` that keeps nothing else in memory: a part made by splitting is copied
// unless it is the whole of what was split; any other string is retained.
CFStringRef CFStringCreateCopy(CFAllocatorRef allocator, CFStringRef string);

// The parts of `string` between the occurrences of `separator`, empty parts included; a string
// without the separator is one part. The parts share the storage of `string`, which the array
// retains.
CFArrayRef CFStringCreateArrayBySeparatingStrings(CFAllocatorRef allocator, CFStringRef string,
                                                  CFStringRef separator);

CFIndex CFStringGetLength(CFStringRef string);
void CFStringGetCharacters(CFStringRef string, CFRange range, UniChar* buffer);

// Code unit by code unit; `options` is 0.
CFComparisonResult CFStringCompare(CFStringRef first, CFStringRef second, CFOptionFlags options);

// The encoding of byte strings: the code set of the user's locale, or UTF-8 if that is C, POSIX or
// not set.
CFStringEncoding CFStringGetSystemEncoding();

// The largest number of bytes, without a terminator, that `length` code units can need.
CFIndex CFStringGetMaximumSizeForEncoding(CFIndex length, CFStringEncoding encoding);

// Writes the string as bytes with a terminating zero. A character that the encoding lacks becomes
// '?', a lone surrogate U+FFFD. False, with an empty byte string in the buffer, if `size` bytes do
// not hold it.
Boolean CFStringGetCString(CFStringRef string, char* buffer, CFIndex size,
                           CFStringEncoding encoding);

CFIndex CFArrayGetCount(CFArrayRef array);
const void* CFArrayGetValueAtIndex(CFArrayRef array, CFIndex index);

// The text of `key` in the bundle's table `table`, in the user's language. If there is none,
// `value` itself, retained.
CFStringRef CFBundleCopyLocalizedString(CFBundleRef bundle, CFStringRef key, CFStringRef value,
                                        CFStringRef table);

}  // extern "C"

#pragma GCC visibility pop
