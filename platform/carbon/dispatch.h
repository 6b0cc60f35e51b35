#pragma once

#include "platform/carbon/objects.h"

namespace carbon {

// Does to the window what the user did, and issues the command that follows from it. Empty; or,
// where the action names what the window does not have and nothing was done, one clause that says
// so.
std::string Dispatch(WindowRef reference, const display::Action& action);

}  // namespace carbon
