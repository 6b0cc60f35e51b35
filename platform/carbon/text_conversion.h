#pragma once

// Between the texts of this layer and those of the display, which are UTF-8.

#include <string>

#include "platform/corefoundation/CoreFoundation.h"
#include "platform/corefoundation/encoding.h"

namespace carbon {

using encoding::ToUtf16;
using encoding::ToUtf8;

// Null counts as the empty string.
std::u16string ToUtf16(CFStringRef string);

}  // namespace carbon
