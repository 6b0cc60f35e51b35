#pragma once

#include <string>
#include <vector>

namespace workbench {

// Runs a program, whose path is the first of `command`, with `input` as its standard input, and
// waits for its end; its standard output goes to the same place as its standard error. True if it
// ended with status 0. No shell is involved.
bool RunChild(const std::vector<std::string>& command, const std::string& input);

}  // namespace workbench
