#pragma once

#include "platform/carbon/display.h"

namespace terminal {

// The alert as a window: the message over the explanation, with room for the sign of its kind at
// their left; the default button rightmost, cancel beside it and the other at the left.
display::Window WindowOf(const display::Alert& alert);

// Where the sign stands in the window's content, in pixels from the left.
inline constexpr int kAlertIconLeft = 8;

}  // namespace terminal
