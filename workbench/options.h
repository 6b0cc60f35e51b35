#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace workbench {

enum class DisplayChoice { kAuto, kDesktop, kTerminal, kScripted };

// What the command line asks for.
struct Options {
  std::optional<std::string> plugin;  // path of the bundle
  DisplayChoice display = DisplayChoice::kAuto;
  std::optional<std::string> language;
  std::int16_t interface_version = 200;
  bool json = false;
  std::optional<std::string> answers_file;
  std::vector<std::string> answers;  // after those of the file
  std::optional<std::string> describe;
  std::optional<std::string> screenshot;
  std::optional<std::string> record;
  bool record_passwords = false;
  std::optional<std::string> passwords;  // a file with those that recordings do not hold
  bool strict = false;                   // answers that do not fit are an error

  // Of check.
  std::vector<std::string> only;
  std::vector<std::string> exclude;
  double time_limit = 10;  // seconds that a check may take
  bool list = false;
  std::optional<std::string> explain;
  bool failed_only = false;
  bool in_process = false;
  std::optional<std::string> junit;

  std::string command;
  std::vector<std::string> operands;
};

}  // namespace workbench
