#include "workbench/commands.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

#include "calculation/source.h"
#include "calculation/unicode.h"
#include "platform/fmwrapper/FMHost.h"
#include "workbench/check/check.h"
#include "workbench/files.h"
#include "workbench/interruption.h"
#include "workbench/output.h"
#include "workbench/plugin.h"
#include "workbench/plugin_functions.h"
#include "workbench/session.h"

namespace workbench {
namespace {

using calculation::Source;
using calculation::ToUtf8;

std::string FunctionsAsJson(const std::vector<fmx::host::Function>& functions) {
  std::string array = "[";
  for (const fmx::host::Function& function : functions) {
    if (array.size() > 1) array += ", ";
    array += "{\"id\": " + std::to_string(function.id) +
             ", \"name\": " + JsonText(ToUtf8(function.name)) +
             ", \"prototype\": " + JsonText(ToUtf8(function.prototype)) + "}";
  }
  return array + "]\n";
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

}  // namespace

void EvaluateCalculations(const Options& options) {
  HeedInterruptions();
  Session session(options);
  for (std::size_t i = 0; i < options.operands.size(); ++i) {
    const bool is_only = options.operands.size() == 1;
    const std::string name = is_only ? "" : "calculation " + std::to_string(i + 1);
    session.Evaluate(Source(name, options.operands[i]));
  }
  session.End();
}

void RunScript(const Options& options) {
  HeedInterruptions();
  const std::string& path = options.operands.front();
  const std::string text = ReadFile(path);
  Session session(options);
  session.Run(Source(path == "-" ? "standard input" : path, text));
  session.End();
}

void ListFunctions(const Options& options) {
  Session session(options);
  const auto& functions = session.functions().functions();
  Print(options.json ? FunctionsAsJson(functions) : FunctionsAsTable(functions));
  session.End();
}

void ShowInfo(const Options& options) {
  Session session(options);
  Plugin& plugin = session.plugin();
  const std::string name = plugin.String(Plugin::kName);
  const std::string description = plugin.String(Plugin::kDescription);
  const std::string flags = plugin.String(Plugin::kOptions);
  const std::string init_result = std::to_string(plugin.init_result());
  Print(options.json
            ? "{\"name\": " + JsonText(name) + ", \"description\": " + JsonText(description) +
                  ", \"options\": " + JsonText(flags) + ", \"answer\": " + init_result + "}\n"
            : "Name         " + name + "\nDescription  " + description + "\nOptions      " + flags +
                  "\nAnswer       " + init_result + "\n");
  session.End();
}

Status CheckBundle(const Options& options) {
  CheckOptions check;
  check.bundle = ChooseBundle(options);
  if (!options.operands.empty()) check.bundle = options.operands.front();
  check.pattern = options.only;
  check.json = options.json;
  return RunChecks(check, Print);
}

}  // namespace workbench
