#pragma once

#include <memory>

#include "workbench/adviser.h"
#include "workbench/failure.h"
#include "workbench/options.h"

namespace workbench {

// Each loads the bundle, does its work and shuts the plug-in down. They print results on standard
// output and throw Failure if something is wrong.
// The first two return the exit status. `adviser` hears of the script's calls; null: the one that
// the options ask for.
int EvaluateCalculations(const Options& options);
int RunScript(const Options& options, std::unique_ptr<Adviser> adviser = nullptr);
// Explains what the operand names: a command, an answer, a check or a function. Without one, the
// program. Throws Failure (usage) if there is nothing of that name.
void ShowHelp(const Options& options);

void ExplainCalls(const Options& options);
void ListFunctions(const Options& options);
void ShowInfo(const Options& options);

// Checks a bundle, each check in a process that loads it for itself. kWrong if any failed.
Status CheckBundle(const Options& options);

}  // namespace workbench
