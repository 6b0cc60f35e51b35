#pragma once

#include <unicode/locid.h>

namespace calculation {

// What the environment says of a category, such as LC_COLLATE; LC_ALL goes before it and LANG
// behind it. Nobody's locale (C, POSIX, nothing) is English as in the United States.
icu::Locale UserLocale(const char* category);

}  // namespace calculation
