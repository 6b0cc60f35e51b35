#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "calculation/evaluator.h"
#include "calculation/parser.h"
#include "calculation/source.h"

namespace workbench {

// One step of a script, with the steps inside it.
struct Step {
  enum class Kind {
    kCalculation,  // prints its result
    kSetVariable,
    kIf,
    kLoop,
    kExitLoopIf,
  };

  // The steps that an If runs if the test holds; those of Else have no test.
  struct Branch {
    calculation::NodePtr test;
    std::vector<Step> steps;
  };

  Kind kind = Kind::kCalculation;
  calculation::Span place;
  calculation::NodePtr calculation;  // of the first, second and last kind
  std::u16string variable;           // in small letters
  std::vector<Branch> branches;      // of If; a Loop has one
};

// Reads a script step by step. A step is a line, or several while brackets, parentheses, a text or
// a comment are open:
//
//   CALCULATION            Set Variable [ $NAME ; CALCULATION ]
//   If [ TEST ]   Else If [ TEST ]   Else   End If
//   Loop   Exit Loop If [ TEST ]   End Loop
//
// Lines that begin with # and comments are skipped.
class ScriptReader {
 public:
  // Both must outlive the reader.
  ScriptReader(const std::u16string& text, const calculation::ExternalFunctions& externals)
      : text_(text), externals_(externals) {}

  // The next step, a block with all its steps; nothing at the end. What follows it is not looked
  // at. Throws calculation::Error.
  std::optional<Step> Next();

 private:
  struct Line;  // a step's words, without the steps inside it
  enum class Word { kElseIf, kElse, kEndIf, kEndLoop, kNone };

  std::optional<Line> NextLine();
  Step ReadStep(Line& line);
  static Step ReadSetVariable(Line& line);
  Step ReadIf(Line& line);
  Step ReadLoop(Line& line);
  Step ReadExitLoopIf(Line& line);
  static Step ReadCalculation(Line& line);
  static calculation::NodePtr ReadTest(Line& line);
  Line ReadBlock(calculation::Span opening, const std::string& end, std::vector<Step>& steps);

  const std::u16string& text_;
  const calculation::ExternalFunctions& externals_;
  std::size_t position_ = 0;
  int depth_ = 0;          // of blocks
  int loops_ = 0;          // that are open
  bool has_exit_ = false;  // of the innermost open loop
};

// Runs steps, and hands on the result of every bare calculation.
class ScriptRunner {
 public:
  using Printer = std::function<void(const calculation::Value& result)>;

  // When a script's loops have gone round this often in all, it is taken for one that never ends.
  static constexpr long kMostRounds = 1'000'000;

  // All three must outlive the runner.
  ScriptRunner(calculation::ExternalFunctions& externals, calculation::Variables& variables,
               const Printer& print)
      : externals_(externals), variables_(variables), print_(print) {}

  // Throws calculation::Error, and what the external functions throw.
  void Run(const Step& step) { RunStep(step); }

 private:
  // False if the innermost loop is to be left.
  bool RunStep(const Step& step);
  bool RunSteps(const std::vector<Step>& steps);
  bool RunIf(const Step& step);
  void RunLoop(const Step& step);
  calculation::Value Evaluate(const calculation::Node& node);
  bool IsTrue(const calculation::Node& test);

  calculation::ExternalFunctions& externals_;
  calculation::Variables& variables_;
  const Printer& print_;
  long rounds_ = 0;
};

}  // namespace workbench
