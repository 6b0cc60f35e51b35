#pragma once

#include "workbench/options.h"

namespace workbench {

// An interactive session: runs each step as soon as it has been entered whole, in one life of the
// plug-in. At a terminal what is wrong is reported and the session goes on; elsewhere the first
// thing wrong ends it as it ends a script, and is thrown as a Failure.
void RunRepl(const Options& options);

}  // namespace workbench
