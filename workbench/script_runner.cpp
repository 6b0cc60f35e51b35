#include <algorithm>
#include <utility>

#include "calculation/unicode.h"
#include "workbench/script.h"

namespace workbench {

using calculation::Error;
using calculation::Evaluator;
using calculation::Node;
using calculation::Text;
using calculation::Value;
using calculation::Variables;

namespace {

constexpr int kDeepest = 50;

constexpr const char* kParameter = "Get ( ScriptParameter )";
constexpr const char* kName = "Get ( ScriptName )";

// The variables of one script, which are out of reach while it performs another.
Variables TakeLocals(Variables& variables) {
  Variables locals;
  for (auto variable = variables.begin(); variable != variables.end();) {
    const auto next = std::next(variable);
    if (!variable->first.starts_with(u"$$")) locals.insert(variables.extract(variable));
    variable = next;
  }
  return locals;
}

}  // namespace

void ScriptRunner::Run(ScriptReader& reader) {
  if (RunScript(reader) == Next::kExitScript && result_) print_(*result_);
}

ScriptRunner::Next ScriptRunner::RunScript(ScriptReader& reader) {
  Next next = Next::kStep;
  result_.reset();
  while (next == Next::kStep) {
    const std::optional<Step> step = reader.Next();
    if (!step) break;
    next = RunStep(*step);
  }
  return next;
}

ScriptRunner::Next ScriptRunner::RunStep(const Step& step) {
  switch (step.kind) {
    case Step::Kind::kCalculation:
      print_(Evaluate(step, 0));
      break;
    case Step::Kind::kSetVariable:
      Evaluator(functions_, variables_).Set(step.variable, Evaluate(step, 0));
      break;
    case Step::Kind::kIf:
      return RunIf(step);
    case Step::Kind::kLoop:
      return RunLoop(step);
    case Step::Kind::kExitLoopIf:
      return IsTrue(*step.calculations.front()) ? Next::kLeaveLoop : Next::kStep;
    case Step::Kind::kExitScript:
      ran_all_ = false;
      result_.reset();
      if (!step.calculations.empty()) result_ = Evaluate(step, 0);
      return Next::kExitScript;
    case Step::Kind::kHaltScript:
      ran_all_ = false;
      return Next::kHalt;
    case Step::Kind::kPerformScript:
      return Perform(step);
    case Step::Kind::kShowCustomDialog:
      ShowCustomDialog(step);
      break;
  }
  return Next::kStep;
}

ScriptRunner::Next ScriptRunner::RunSteps(const std::vector<Step>& steps) {
  for (const Step& step : steps) {
    if (const Next next = RunStep(step); next != Next::kStep) return next;
  }
  return Next::kStep;
}

ScriptRunner::Next ScriptRunner::RunIf(const Step& step) {
  ran_all_ = false;
  for (const Step::Branch& branch : step.branches) {
    if (!branch.test || IsTrue(*branch.test)) return RunSteps(branch.steps);
  }
  return Next::kStep;
}

ScriptRunner::Next ScriptRunner::RunLoop(const Step& step) {
  while (true) {
    const Next next = RunSteps(step.branches.front().steps);
    if (next == Next::kLeaveLoop) return Next::kStep;
    if (next != Next::kStep) return next;
    if (++rounds_ == kMostRounds) {
      throw Error(step.place,
                  "the script's loops have gone round " + std::to_string(kMostRounds) + " times");
    }
  }
}

// While another script runs, which sees the $$variables alone. However it ends, the script that
// performs it has its own variables again.
class ScriptRunner::OtherScript {
 public:
  OtherScript(ScriptRunner& runner, const Value& name, const Value& parameter)
      : runner_(runner), locals_(TakeLocals(runner.variables_)) {
    ++runner.depth_;
    runner.functions_.Tell(kName, name);
    runner.functions_.Tell(kParameter, parameter);
  }
  OtherScript(const OtherScript&) = delete;
  OtherScript& operator=(const OtherScript&) = delete;
  ~OtherScript() {
    --runner_.depth_;
    runner_.functions_.Tell(kName, outer_name_);
    runner_.functions_.Tell(kParameter, outer_parameter_);
    TakeLocals(runner_.variables_);
    runner_.variables_.merge(locals_);
  }

 private:
  ScriptRunner& runner_;
  const Value outer_name_ = runner_.functions_.Get(kName);
  const Value outer_parameter_ = runner_.functions_.Get(kParameter);
  Variables locals_;
};

ScriptRunner::Next ScriptRunner::Perform(const Step& step) {
  const Text name = calculation::AsText(Evaluate(step, 0));
  const Value parameter = Evaluate(step, 1);
  ScriptReader reader(text_, functions_);
  if (!reader.GoToScript(name)) {
    throw Error(step.place, "there is no script \"" + calculation::ToUtf8(name) +
                                R"(" here; a line Script [ "NAME" ] begins one)");
  }
  if (depth_ == kDeepest) {
    throw Error(step.place, "scripts perform each other more than " + std::to_string(kDeepest) +
                                " levels deep");
  }
  const OtherScript other(*this, name, parameter);
  const Next next = RunScript(reader);
  functions_.Tell("Get ( ScriptResult )", result_.value_or(Value()));
  return next == Next::kHalt ? next : Next::kStep;
}

// With the buttons that a new step has.
void ScriptRunner::ShowCustomDialog(const Step& step) {
  const auto text = [&](std::size_t i) {
    return calculation::ToUtf8(calculation::AsText(Evaluate(step, i)));
  };
  const std::string title = text(0);
  const int button = functions_.ShowMessage(step.place, title, text(1), {"OK", "Cancel"});
  functions_.Tell("Get ( LastMessageChoice )", calculation::Decimal(button));
}

// Empty if the step is given no such calculation.
Value ScriptRunner::Evaluate(const Step& step, std::size_t calculation) {
  if (calculation >= step.calculations.size()) return {};
  return Evaluator(functions_, variables_).Evaluate(*step.calculations[calculation]);
}

bool ScriptRunner::IsTrue(const Node& test) {
  const Value value = Evaluator(functions_, variables_).Evaluate(test);
  try {
    return calculation::AsTruth(value);
  } catch (const calculation::NumberError& error) {
    throw Error(test.place, error.what());
  }
}

}  // namespace workbench
