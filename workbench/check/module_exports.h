#pragma once

#include <filesystem>
#include <set>
#include <string>

namespace workbench::check {

// The names that a module exports, read from its dynamic symbol table without loading it. Throws
// ContractBroken if the file is no whole module for this machine.
std::set<std::string> ReadExports(const std::filesystem::path& module);

}  // namespace workbench::check
