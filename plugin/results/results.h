#pragma once

// The functions that return the results of the last dialog, any number of times until the next one
// replaces them. None of these reads its parameter, which only gives the result its locale.

#include "plugin/frame/external_function.h"

// The composed result text.
TarvoFunction Do_TarvoLastValue;

// The value of one field.
TarvoFunction Do_TarvoV1;
TarvoFunction Do_TarvoV2;
TarvoFunction Do_TarvoV3;
TarvoFunction Do_TarvoV4;

// How the dialog ended: the button's code, or "E" after Escape.
TarvoFunction Do_TarvoLC;
