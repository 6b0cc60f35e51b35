#pragma once

#include "platform/carbon/Carbon.h"
#include "platform/carbon/display.h"
#include "platform/carbon/refusal.h"

namespace carbon {

// Does to the window what the user did, and issues the command that follows from it. Refuses an
// action that names what the window does not have; nothing is done then.
Refusal Dispatch(WindowRef reference, const display::Action& action);

}  // namespace carbon
