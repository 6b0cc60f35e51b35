#pragma once

// The program under test, and folders for what it writes.

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "tests/support/run_program.h"
#include "tests/support/temporary_folder.h"

namespace workbench {

using testing_tools::Ending;
using testing_tools::TemporaryFolder;

inline Ending Tarvo(std::vector<std::string> arguments, std::string input = "",
                    std::vector<std::string> environment = {}) {
  return testing_tools::Run(
      {TARVO_PROGRAM, std::move(arguments), std::move(input), std::move(environment)});
}

inline std::string ReadAll(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

// A bundle whose module is a copy of the file `module`.
inline std::string MakeBundle(const TemporaryFolder& folder, const std::string& name,
                              const std::string& module) {
  const std::filesystem::path bundle = folder / (name + ".fmplugin");
  std::filesystem::create_directories(bundle / "Contents/Linux");
  if (!module.empty()) std::filesystem::copy_file(module, bundle / "Contents/Linux" / name);
  return bundle;
}

inline bool Holds(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

// One line and its end.
inline bool IsOneLine(const std::string& text) {
  return text.size() > 1 && text.find('\n') == text.size() - 1;
}

}  // namespace workbench
