#pragma once

#include <filesystem>
#include <string>

namespace workbench {

// Why the loader must not be given this file, as one clause that follows the file's name; empty if
// nothing is wrong. Reads its headers: a module for this machine, whole, and with its tables inside
// it. What its code does when it runs nothing can tell beforehand.
std::string WhyNoModule(const std::filesystem::path& path);

}  // namespace workbench
