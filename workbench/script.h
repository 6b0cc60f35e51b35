#pragma once

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "calculation/evaluator.h"
#include "calculation/lexer.h"
#include "calculation/parser.h"
#include "calculation/source.h"
#include "workbench/plugin_functions.h"

namespace workbench {

// One step of a script, with the steps inside it.
struct Step {
  enum class Kind {
    kCalculation,  // prints its result
    kSetVariable,
    kIf,
    kLoop,
    kExitLoopIf,
    kExitScript,
    kHaltScript,
    kPerformScript,
    kShowCustomDialog,
  };

  // The steps that an If runs if the test holds; those of Else have no test.
  struct Branch {
    calculation::NodePtr test;
    std::vector<Step> steps;
  };

  Kind kind = Kind::kCalculation;
  calculation::Span place;
  // What the step is given: a value, a test, the result to exit with; a script's name and its
  // parameter; a title, a message and buttons. What is left out at the end is not there.
  std::vector<calculation::NodePtr> calculations = {};
  calculation::Variable variable = {};
  std::vector<Branch> branches = {};  // of If; a Loop has one
};

// Reads a script step by step, as FileMaker copies scripts as text. A step is a line, or several
// while brackets, parentheses, a text or a comment are open, or an operator is the last of a line:
//
//   CALCULATION            Set Variable [ $NAME ; Value: CALCULATION ]
//   If [ TEST ]   Else If [ TEST ]   Else   End If
//   Loop   Exit Loop If [ TEST ]   End Loop
//   Perform Script [ "NAME" ; Parameter: CALCULATION ]
//   Exit Script [ Text Result: CALCULATION ]   Halt Script
//   Show Custom Dialog [ TITLE ; MESSAGE ]
//
// Lines that begin with # and comments are skipped, and so are steps that change nothing here. The
// line Script [ "NAME" ] begins a script that others perform, and ends the one before.
class ScriptReader {
 public:
  // Both must outlive the reader.
  ScriptReader(const std::u16string& text, const calculation::ExternalFunctions& externals)
      : text_(text), externals_(externals) {}

  // The next step, a block with all its steps; nothing at the end. What follows it is not looked
  // at. Throws calculation::Error.
  std::optional<Step> Next();

  // Reads the steps of the text so far, for Next to return. False if the text ends within a step or
  // a block: when there is more of it, this reads on where it ended. Every line is read once.
  bool ReadAhead();

  // Moves behind the name of the script that the text begins with, if it says one.
  void SkipName();

  // Moves to the script of this name. False if the text has none. Throws calculation::Error.
  bool GoToScript(std::u16string_view name);

 private:
  struct Line;  // a step's words, without the steps inside it
  enum class Word { kElseIf, kElse, kEndIf, kEndLoop, kNone };

  // A block whose end has not been read.
  struct OpenBlock {
    Step step;
    bool has_exit = false;  // of a loop
  };

  bool SkipToStep();
  bool IsStillOpen();
  void ReadOn();
  std::optional<Line> NextLine();
  std::optional<Step> ReadNext();
  std::optional<Step> Begin(Line& line);
  std::optional<Step> Continue(Line& line);
  Step ReadStep(Line& line);
  static Step ReadSetVariable(Line& line);
  static Step ReadExitScript(Line& line);
  static Step ReadPerformScript(Line& line);
  static Step ReadShowCustomDialog(Line& line);
  static Step ReadIf(Line& line);
  static Step ReadLoop(Line& line);
  Step ReadExitLoopIf(Line& line);
  static Step ReadCalculation(Line& line);
  static calculation::NodePtr ReadTest(Line& line);

  const std::u16string& text_;
  const calculation::ExternalFunctions& externals_;
  std::size_t position_ = 0;
  std::vector<OpenBlock> open_;

  calculation::Statement statement_;                 // that is being read
  std::optional<calculation::Unfinished> unclosed_;  // text, comment or name that it ended in
  std::size_t looked_at_ = 0;  // how much of the text is known not to close it
  bool more_may_follow_ = false;
  bool needs_more_ = false;                  // to read on
  std::deque<Step> ready_;                   // that were read ahead
  std::optional<calculation::Error> error_;  // behind them
};

// Runs the steps of a text, and hands on the result of every bare calculation and of the script
// itself.
class ScriptRunner {
 public:
  using Printer = std::function<void(const calculation::Value& result)>;

  // When a script's loops have gone round this often in all, it is taken for one that never ends.
  static constexpr long kMostRounds = 1'000'000;

  // All four must outlive the runner.
  ScriptRunner(const std::u16string& text, PluginFunctions& functions,
               calculation::Variables& variables, const Printer& print)
      : text_(text), functions_(functions), variables_(variables), print_(print) {}

  // Runs the script that the text begins with, which `reader` reads. Throws calculation::Error, and
  // what the functions throw.
  void Run(ScriptReader& reader);

  // Whether every step was run: none that an If or the end of a script left out.
  bool ran_all() const { return ran_all_; }

 private:
  class OtherScript;
  enum class Next { kStep, kLeaveLoop, kExitScript, kHalt };

  Next RunStep(const Step& step);
  Next RunSteps(const std::vector<Step>& steps);
  Next RunScript(ScriptReader& reader);
  Next RunIf(const Step& step);
  Next RunLoop(const Step& step);
  Next Perform(const Step& step);
  void ShowCustomDialog(const Step& step);
  calculation::Value Evaluate(const Step& step, std::size_t calculation);
  bool IsTrue(const calculation::Node& test);

  const std::u16string& text_;
  PluginFunctions& functions_;
  calculation::Variables& variables_;
  const Printer& print_;
  std::optional<calculation::Value> result_;  // that the last script exited with
  long rounds_ = 0;
  bool ran_all_ = true;
  int depth_ = 0;  // of scripts that perform others
};

}  // namespace workbench
