#pragma once

// What the last dialog left, any number of times until the next dialog replaces it. None of these
// reads its parameter; it serves the result's locale alone.

#include "plugin/frame/external_function.h"

// The composed result text.
TarvoFunction Do_TarvoLastValue;

// The value of one field.
TarvoFunction Do_TarvoV1;
TarvoFunction Do_TarvoV2;
TarvoFunction Do_TarvoV3;
TarvoFunction Do_TarvoV4;

// How the dialog ended.
TarvoFunction Do_TarvoLC;
