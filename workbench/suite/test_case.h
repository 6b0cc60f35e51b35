#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "workbench/check/isolation.h"

namespace workbench::suite {

// A script of dialogs with what is expected of it, in files of one name beside each other:
// NAME.tarvo, NAME.expected with its results, NAME.answers if it shows dialogs, NAME.dialogs if
// their descriptions are to stay as they are, and the folder NAME.pictures if their look is.
class TestCase {
 public:
  static constexpr const char* kScript = ".tarvo";
  static constexpr const char* kAnswers = ".answers";
  static constexpr const char* kExpected = ".expected";
  static constexpr const char* kDialogs = ".dialogs";
  static constexpr const char* kPictures = ".pictures";
  static constexpr const char* kNewPictures = ".pictures.new";  // of a run, if they look different

  // `script` is the path of NAME.tarvo.
  explicit TestCase(std::filesystem::path script) : script_(std::move(script)) {}

  std::string Name() const;  // the path without ".tarvo"

  // The path of the file with this ending: ".answers".
  std::string File(const std::string& ending) const;
  bool Has(const std::string& ending) const { return std::filesystem::exists(File(ending)); }

 private:
  std::filesystem::path script_;
};

// What a script did.
struct Outcome {
  int status = 0;
  int signal = 0;  // that ended it; 0: none
  bool timed_out = false;
  double seconds = 0;
  std::string output;
  std::string errors;
  std::string dialogs;  // their descriptions, one a line
};

// Those that the paths name: scripts, and folders with all that have a file of what is expected in
// them, in the order of their names. Throws Failure (usage) if a path leads nowhere or to nothing.
std::vector<TestCase> FindTests(const std::vector<std::string>& paths);

// Whether the test passed, and what is different. Throws Failure.
check::Result Judge(const TestCase& test, const Outcome& outcome);

// Writes what happened as what is expected, descriptions and pictures too if they
// are kept. Throws Failure.
void Keep(const TestCase& test, const Outcome& outcome);

}  // namespace workbench::suite
