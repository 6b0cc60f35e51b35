#pragma once

// What the system tells of processes.

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace desktop_test {

namespace fs = std::filesystem;

// What follows `name` on the line of that beginning.
inline std::string Line(const std::string& file, const std::string& name) {
  std::ifstream stream(file);
  for (std::string line; std::getline(stream, line);) {
    if (line.starts_with(name)) return line.substr(name.size());
  }
  return "";
}

// What the descriptors of a process refer to.
inline std::vector<std::string> DescriptorsOf(const std::string& process) {
  std::vector<std::string> targets;
  for (const auto& entry : fs::directory_iterator("/proc/" + process + "/fd")) {
    std::error_code gone;  // the one that the directory itself is read with
    targets.push_back(fs::read_symlink(entry.path(), gone).string());
  }
  return targets;
}

}  // namespace desktop_test
