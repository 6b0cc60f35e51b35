#pragma once

#include <string>
#include <vector>

#include "workbench/options.h"

namespace workbench {

// What the words behind the program's name ask for. The command is "help" where help is asked for
// in any way, with the command in question as its operand, and "version" for --version. Throws
// Failure (usage).
Options ParseCommandLine(const std::vector<std::string>& words);

// Help on a command, or on the whole program where `command` is empty.
std::string HelpText(const std::string& command);

std::string VersionText();

}  // namespace workbench
