#pragma once

#include "workbench/failure.h"
#include "workbench/options.h"

namespace workbench {

// Each loads the bundle, does its work and shuts the plug-in down. They print results on standard
// output and throw Failure if something is wrong.
void EvaluateCalculations(const Options& options);
void RunScript(const Options& options);
void ListFunctions(const Options& options);
void ShowInfo(const Options& options);

// Checks a bundle, each check in a process that loads it for itself. kWrong if any failed.
Status CheckBundle(const Options& options);

}  // namespace workbench
