#pragma once

#include <memory>
#include <string>
#include <vector>

#include "calculation/evaluator.h"
#include "calculation/source.h"
#include "calculation/value.h"
#include "workbench/adviser.h"
#include "workbench/options.h"
#include "workbench/plugin.h"
#include "workbench/plugin_functions.h"
#include "workbench/script.h"
#include "workbench/user.h"

namespace workbench {

// One life of the plug-in, with its user and the variables of its calculations.
class Session {
 public:
  // `adviser` hears of all calls; null: the one that the options ask for. Throws Failure (usage,
  // bundle).
  explicit Session(const Options& options, std::unique_ptr<Adviser> adviser = nullptr);

  Plugin& plugin() { return plugin_; }
  const PluginFunctions& functions() const { return functions_; }

  // Evaluates a calculation and prints its result. Throws Failure.
  void Evaluate(const calculation::Source& source);

  // The same for each calculation of a script.
  void Run(const calculation::Source& script);

  // The same for one that `reader`, which reads it, may have begun to read.
  void Run(const calculation::Source& script, ScriptReader& reader);

  // What calculations can name now: functions, the language's own too, and variables.
  std::vector<std::string> Names() const;

  // Ends the plug-in's life. Throws Failure if the plug-in throws, or if answers are left over, or
  // advice was given, that should not be.
  void End();

  // What the program ends with: 0, or 10 and the button that the last result says if the options
  // ask for that.
  int ExitStatus() const;

 private:
  void SetArguments(const Options& options);
  void PrintResult(const calculation::Value& result);
  void Read(const calculation::Source& source);

  bool json_;
  bool strict_;
  bool prints_results_;
  bool fields_;
  bool button_status_;
  std::string last_result_;
  User user_;
  Plugin plugin_;
  PluginFunctions functions_;
  calculation::Variables variables_;
  std::unique_ptr<Adviser> adviser_;  // null: no advice is asked for
  bool ran_all_;                      // every step of the scripts; of a session more could follow
};

}  // namespace workbench
