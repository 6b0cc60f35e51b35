#pragma once

#include "workbench/failure.h"
#include "workbench/options.h"

namespace workbench {

// Runs the tests that the operands name, those of this folder if there are none, each in a process
// and a life of the plug-in of its own, several at a time, and prints which passed. kWrong if one
// failed. Throws Failure (usage) if there are none.
Status RunTests(const Options& options);

// Plays the script that `options.record` names to the user, or to the answers given, and keeps what
// happened as a test. Returns how the script ended.
Status RecordTest(const Options& options);

}  // namespace workbench
