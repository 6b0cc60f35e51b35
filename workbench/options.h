#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
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
  std::optional<double> timeout;  // seconds, of a dialog without an answer or of a check
  std::optional<std::string> answers_file;
  std::vector<std::string> answers;  // after those of the file
  std::optional<std::string> describe;
  std::optional<std::string> screenshot;
  std::optional<std::string> record;
  bool record_passwords = false;
  bool record_numbers = false;           // in place of names
  std::optional<std::string> passwords;  // a file with those that recordings do not hold
  bool strict = false;                   // answers that do not fit, and advice, are errors

  // Of calculations: values of variables by name, in the order in which they are set.
  std::vector<std::pair<std::string, std::string>> arguments;
  std::optional<std::string> arguments_file;
  bool fields = false;         // prints the items of results
  bool button_status = false;  // the last result's button is the exit status

  // Of advice.
  bool advise = false;
  std::vector<std::string> except;

  // Of tests.
  std::optional<int> jobs;
  bool update = false;
  bool tap = false;

  // Of check, tests and advice.
  std::vector<std::string> only;

  // Of check and tests.
  std::vector<std::string> exclude;
  bool list = false;
  std::optional<std::string> explain;
  bool failed_only = false;
  bool in_process = false;
  std::optional<std::string> junit;

  std::string command;
  std::vector<std::string> operands;

  // Whether nobody sees the dialogs, which need no answers, or is told the results.
  bool OnlyLooks() const { return command == "explain" || command == "preview"; }
};

}  // namespace workbench
