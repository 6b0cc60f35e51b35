#pragma once

#include <filesystem>
#include <set>
#include <string>

namespace workbench::check {

// The names that a module gives away, read from its dynamic symbol table without loading it. Throws
// ContractBroken where the file is no whole module for this machine.
std::set<std::string> ReadExports(const std::filesystem::path& module);

}  // namespace workbench::check
