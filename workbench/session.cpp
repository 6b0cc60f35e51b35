#include "workbench/session.h"

#include <algorithm>
#include <exception>
#include <nlohmann/json.hpp>
#include <string>
#include <utility>
#include <vector>

#include "calculation/built_ins.h"
#include "calculation/parser.h"
#include "calculation/unicode.h"
#include "workbench/explainer.h"
#include "workbench/failure.h"
#include "workbench/files.h"
#include "workbench/output.h"
#include "workbench/user_text.h"

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

// The keys of an object, and what they hold: texts as they are, anything else as JSON.
std::vector<std::pair<std::string, std::string>> ReadArguments(const std::string& path) {
  std::vector<std::pair<std::string, std::string>> arguments;
  try {
    const auto object = display::ParseJson(FromUser(ReadFile(path), path));
    if (!object.is_object()) throw Failure(Status::kUsage, path + ": expected a JSON object");
    for (const auto& [name, value] : object.items()) {
      arguments.emplace_back(name, value.is_string() ? value.get<std::string>() : value.dump());
    }
  } catch (const display::Json::exception& error) {
    throw Failure(Status::kUsage, path + ": " + error.what());
  }
  return arguments;
}

std::vector<std::string> FieldsOf(const std::string& result) {
  std::vector<std::string> fields{""};
  for (const char sign : result) {
    if (sign == '|') {
      fields.emplace_back();
    } else {
      fields.back() += sign;
    }
  }
  return fields;
}

}  // namespace

Session::Session(const Options& options, std::unique_ptr<Adviser> adviser)
    : json_(options.json),
      strict_(options.strict),
      prints_results_(!options.OnlyLooks()),
      fields_(options.fields),
      button_status_(options.button_status),
      user_(options),
      plugin_(ChooseBundle(options), options.interface_version),
      functions_(user_),
      adviser_(std::move(adviser)),
      ran_all_(options.command != "repl") {
  SetArguments(options);
  if (adviser_) {
    // it was given
  } else if (options.command == "explain") {
    adviser_ = std::make_unique<Explainer>(options);
  } else if (options.advise || options.command == "repl") {
    adviser_ = std::make_unique<Adviser>(options);
  }
  functions_.TellCallsTo(adviser_.get());
}

// As texts, whatever they are: nothing of them is evaluated.
void Session::SetArguments(const Options& options) {
  const auto set = [this](std::string name, const std::string& value) {
    if (!name.starts_with('$')) name.insert(0, "$");
    if (name.find_first_not_of('$') == std::string::npos) {
      throw Failure(Status::kUsage, "a variable is to have a name");
    }
    variables_[calculation::Lowercase(calculation::ToUtf16(name))] =
        calculation::Text(calculation::ToUtf16(value));
  };
  if (options.arguments_file) {
    for (const auto& [name, value] : ReadArguments(*options.arguments_file)) set(name, value);
  }
  for (const auto& [name, value] : options.arguments) {
    set(FromUser(name, "--arg"), FromUser(value, "--arg"));
  }
}

void Session::Read(const calculation::Source& source) {
  if (adviser_) adviser_->Read(source);
}

void Session::Evaluate(const calculation::Source& source) {
  Read(source);
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
  Read(script);
  const ScriptRunner::Printer print = [this](const auto& result) { PrintResult(result); };
  ScriptRunner runner(script.text(), functions_, variables_, print);
  Explaining(script, [&] { runner.Run(reader); });
  if (!runner.ran_all()) ran_all_ = false;
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
  if (!adviser_) return;
  adviser_->End(ran_all_);
  if (strict_ && adviser_->count() > 0) {
    throw Failure(Status::kWrong, adviser_->count() == 1
                                      ? "there is advice"
                                      : std::to_string(adviser_->count()) + " pieces of advice");
  }
}

int Session::ExitStatus() const {
  constexpr int kEscape = 10;
  const std::string button = FieldsOf(last_result_).front();
  if (!button_status_) return 0;
  if (button == "E") return kEscape;
  const bool is_button = button.size() == 1 && button[0] >= '1' && button[0] <= '4';
  return is_button ? kEscape + (button[0] - '0') : 0;
}

void Session::PrintResult(const calculation::Value& result) {
  last_result_ = calculation::ToUtf8(calculation::AsText(result));
  if (!prints_results_) return;
  if (json_ && !fields_) return PrintJson(FormatResultAsJson(result));
  if (json_)
    return PrintJson(ToLine({{"type", "fields"}, {"result", FieldsOf(last_result_)}}) + "\n");
  if (!fields_) return Print(FormatResult(result));
  for (const std::string& field : FieldsOf(last_result_)) {
    Print(FormatResult(calculation::Text(calculation::ToUtf16(field))));
  }
}

}  // namespace workbench
