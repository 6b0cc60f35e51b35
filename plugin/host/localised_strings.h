#pragma once

// The texts that the plug-in gives FileMaker, by number, from its bundle's localised strings table.

#include <cstdint>

#include "platform/corefoundation/CoreFoundation.h"
#include "platform/fmwrapper/FMWrapper.h"

// Copies a string with a terminating zero into `buffer`, which has room for `size` code units. A
// string fits only if at least one unit stays free behind its terminator. Returns its length in
// code units; 0, with nothing touched, if it does not fit or there is none.
std::int32_t Sub_OSXLoadString(std::uint32_t number, UniChar* buffer, std::int32_t size);

// FileMaker's request for a string: as above, but 131 asks for string 1. `language` is not used.
std::int32_t Do_GetString(std::uint32_t number, std::uint32_t language, std::int32_t size,
                          UniChar* buffer);

// Sets `text` to a string of up to 1022 code units, or to the empty text. With `cut` everything
// from the first "(" on is removed.
void Do_GetString(std::uint32_t number, fmx::TextAutoPtr& text, bool cut);
