#include "workbench/commands.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstddef>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "calculation/source.h"
#include "calculation/unicode.h"
#include "displays/protocol/display_json.h"
#include "displays/scripted/answers.h"
#include "platform/fmwrapper/FMHost.h"
#include "workbench/check/check.h"
#include "workbench/check/contract.h"
#include "workbench/command_line.h"
#include "workbench/files.h"
#include "workbench/function_help.h"
#include "workbench/interruption.h"
#include "workbench/output.h"
#include "workbench/plugin.h"
#include "workbench/plugin_functions.h"
#include "workbench/session.h"
#include "workbench/user_text.h"

namespace workbench {
namespace {

using calculation::Source;
using calculation::ToUtf8;

// A source says itself if it is not UTF-8, and in which line.
Source SourceOf(const std::string& name, const std::string& bytes) {
  return {name, FromUser(bytes).value_or(bytes)};
}

std::string FunctionsAsJson(const std::vector<fmx::host::Function>& functions) {
  display::Json array = display::Json::array();
  for (const fmx::host::Function& function : functions) {
    array.push_back({{"id", function.id},
                     {"name", ToUtf8(function.name)},
                     {"prototype", ToUtf8(function.prototype)}});
  }
  return ToLine(array) + "\n";
}

// Columns are aligned by code units: one is one column in the names of functions.
std::string FunctionsAsTable(const std::vector<fmx::host::Function>& functions) {
  std::size_t name_width = 0;
  for (const auto& function : functions) name_width = std::max(name_width, function.name.size());
  std::string table;
  for (const fmx::host::Function& function : functions) {
    const std::string id = std::to_string(function.id);
    table += std::string(id.size() < 3 ? 3 - id.size() : 0, ' ') + id + "  ";
    table += ToUtf8(function.name) + std::string(name_width - function.name.size() + 2, ' ');
    table += ToUtf8(function.prototype) + "\n";
  }
  return table;
}

Status ListChecks(const CheckOptions& options) {
  const std::vector<std::string> names = CheckNames(options);
  if (options.json) {
    PrintJson(ToLine(names) + "\n");
  } else {
    for (const std::string& name : names) Print(name + "\n");
  }
  return Status::kDone;
}

}  // namespace

int EvaluateCalculations(const Options& options) {
  HeedInterruptions();
  Session session(options);
  for (std::size_t i = 0; i < options.operands.size(); ++i) {
    const bool is_only = options.operands.size() == 1;
    const std::string& operand = options.operands[i];
    if (operand == "-") {
      session.Evaluate(SourceOf("standard input", ReadFile(operand)));
    } else {
      session.Evaluate(SourceOf(is_only ? "" : "calculation " + std::to_string(i + 1), operand));
    }
  }
  session.End();
  return session.ExitStatus();
}

int RunScript(const Options& options, std::unique_ptr<Adviser> adviser) {
  HeedInterruptions();
  const std::string& path = options.operands.front();
  const std::string text = ReadFile(path);
  Session session(options, std::move(adviser));
  session.Run(SourceOf(path == "-" ? "standard input" : path, text));
  session.End();
  return session.ExitStatus();
}

void ShowHelp(const Options& options) {
  std::string name;
  for (const std::string& word : options.operands) name += (name.empty() ? "" : " ") + word;
  const std::string answer = display::AnswerUsage(name);
  if (name.empty() || IsCommand(name)) {
    Print(HelpText(name));
  } else if (!answer.empty()) {
    Print(answer + "\n");
  } else if (check::FindClause(name)) {
    Print(ExplainCheck(name));
  } else if (const auto known = FindHelp(name, {})) {
    Print(*known);
  } else {
    Session session(options);
    const auto registered = FindHelp(name, session.functions().functions());
    if (!registered) HelpText(name);  // refuses it
    Print(registered.value_or(""));
  }
}

void ExplainCalls(const Options& options) {
  HeedInterruptions();
  const std::string& operand = options.operands.front();
  const bool is_file = std::filesystem::is_regular_file(operand);
  const Source source = is_file ? Source(operand, ReadFile(operand)) : Source("", operand);
  Session session(options);
  is_file ? session.Run(source) : session.Evaluate(source);
  session.End();
}

void ListFunctions(const Options& options) {
  Session session(options);
  const auto& functions = session.functions().functions();
  options.json ? PrintJson(FunctionsAsJson(functions)) : Print(FunctionsAsTable(functions));
  session.End();
}

void ShowInfo(const Options& options) {
  Session session(options);
  Plugin& plugin = session.plugin();
  const std::string name = plugin.String(Plugin::kName);
  const std::string description = plugin.String(Plugin::kDescription);
  const std::string flags = plugin.String(Plugin::kOptions);
  if (options.json) {
    PrintJson(ToLine({{"name", name},
                      {"description", description},
                      {"options", flags},
                      {"answer", plugin.init_result()}}) +
              "\n");
  } else {
    Print("Name         " + name + "\nDescription  " + description + "\nOptions      " + flags +
          "\nAnswer       " + std::to_string(plugin.init_result()) + "\n");
  }
  session.End();
}

Status CheckBundle(const Options& options) {
  if (options.explain) return Print(ExplainCheck(*options.explain)), Status::kDone;
  CheckOptions check;
  check.bundles = options.operands;
  const std::string bundle = ChooseBundle(options);  // chooses the language too
  if (check.bundles.empty()) check.bundles.push_back(bundle);
  check.only = options.only;
  check.exclude = options.exclude;
  check.json = options.json;
  check.failed_only = options.failed_only;
  check.in_process = options.in_process;
  if (options.timeout) {
    check.time_limit = std::chrono::milliseconds(std::lround(*options.timeout * 1000));
  }
  if (options.list) return ListChecks(check);
  std::optional<LineFile> junit;
  if (options.junit) {
    junit.emplace(*options.junit);
    check.junit = [&](std::string_view xml) { junit->Write(xml); };
  }
  return RunChecks(check, options.json ? PrintJson : Print);
}

}  // namespace workbench
