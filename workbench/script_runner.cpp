#include "workbench/script.h"

#include <algorithm>

namespace workbench {

using calculation::Error;
using calculation::Evaluator;
using calculation::Node;
using calculation::Value;

bool ScriptRunner::RunStep(const Step& step) {
  switch (step.kind) {
    case Step::Kind::kCalculation:
      print_(Evaluate(*step.calculation));
      return true;
    case Step::Kind::kSetVariable:
      variables_[step.variable] = Evaluate(*step.calculation);
      return true;
    case Step::Kind::kIf:
      return RunIf(step);
    case Step::Kind::kLoop:
      RunLoop(step);
      return true;
    case Step::Kind::kExitLoopIf:
      return !IsTrue(*step.calculation);
  }
  return true;
}

bool ScriptRunner::RunSteps(const std::vector<Step>& steps) {
  return std::all_of(steps.begin(), steps.end(),
                     [this](const Step& step) { return RunStep(step); });
}

bool ScriptRunner::RunIf(const Step& step) {
  for (const Step::Branch& branch : step.branches) {
    if (!branch.test || IsTrue(*branch.test)) return RunSteps(branch.steps);
  }
  return true;
}

void ScriptRunner::RunLoop(const Step& step) {
  while (RunSteps(step.branches.front().steps)) {
    if (++rounds_ == kMostRounds) {
      throw Error(step.place,
                  "the script's loops have gone round " + std::to_string(kMostRounds) + " times");
    }
  }
}

Value ScriptRunner::Evaluate(const Node& node) {
  return Evaluator(externals_, variables_).Evaluate(node);
}

bool ScriptRunner::IsTrue(const Node& test) {
  const Value value = Evaluate(test);
  try {
    return calculation::AsTruth(value);
  } catch (const calculation::NumberError& error) {
    throw Error(test.place, error.what());
  }
}

}  // namespace workbench
