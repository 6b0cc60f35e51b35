#pragma once

#include <string>
#include <vector>

#include "workbench/options.h"

namespace workbench {

// What the words after the program's name ask for. The command is "help" if help is asked for in
// any way, with the command in question as its operand, and "version" for --version. Throws Failure
// (usage).
Options ParseCommandLine(const std::vector<std::string>& words);

// Help on a command, or on the whole program if `command` is empty.
std::string HelpText(const std::string& command);

bool IsCommand(const std::string& name);

std::string VersionText();

}  // namespace workbench
