#include "workbench/session.h"

#include <exception>

#include "calculation/built_ins.h"
#include "calculation/parser.h"
#include "calculation/unicode.h"
#include "workbench/failure.h"
#include "workbench/output.h"

namespace workbench {
namespace {

// Does `work`, and explains what it finds wrong in `source`.
template <class Work>
void Explaining(const calculation::Source& source, Work work) {
  try {
    source.CheckEncoding();
    work();
  } catch (const calculation::Error& error) {
    throw Failure(Status::kWrong, source.Explain(error));
  }
}

}  // namespace

Session::Session(const Options& options)
    : json_(options.json),
      user_(options),
      plugin_(ChooseBundle(options), options.interface_version),
      functions_(user_) {}

void Session::Evaluate(const calculation::Source& source) {
  Explaining(source, [&] {
    const calculation::NodePtr tree = calculation::Parse(source.text(), functions_);
    PrintResult(calculation::Evaluator(functions_, variables_).Evaluate(*tree));
  });
}

void Session::Run(const calculation::Source& script) {
  ScriptReader reader(script.text(), functions_);
  Run(script, reader);
}

void Session::Run(const calculation::Source& script, ScriptReader& reader) {
  const ScriptRunner::Printer print = [this](const auto& result) { PrintResult(result); };
  Explaining(script,
             [&] { ScriptRunner(script.text(), functions_, variables_, print).Run(reader); });
}

std::vector<std::string> Session::Names() const {
  std::vector<std::string> names;
  for (const auto& signature : functions_.signatures()) names.push_back(signature.name);
  for (std::string& name : calculation::BuiltInNames()) names.push_back(std::move(name));
  for (const auto& variable : variables_) names.push_back(calculation::ToUtf8(variable.first));
  return names;
}

void Session::End() {
  try {
    plugin_.ShutDown();
  } catch (const std::exception& error) {
    throw Failure(Status::kWrong,
                  std::string("the plug-in threw while it was shut down: ") + error.what());
  }
  user_.CheckAnswers();
}

void Session::PrintResult(const calculation::Value& result) const {
  json_ ? PrintJson(FormatResultAsJson(result)) : Print(FormatResult(result));
}

}  // namespace workbench
