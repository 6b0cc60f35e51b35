#pragma once

#include "workbench/options.h"

namespace workbench {

// Shows the dialogs of the script that the operand names, and what looks wrong with them, in a
// window that is drawn anew whenever the script is saved, until the user closes it. If the options
// name a folder for pictures, draws the dialogs into it instead, once, and says the advice on
// standard error. Nothing answers the dialogs but answers that are given. Throws Failure.
void Preview(const Options& options);

}  // namespace workbench
