#include "workbench/plugin_functions.h"

#include <exception>
#include <string>
#include <variant>

#include "calculation/decimal.h"
#include "calculation/unicode.h"
#include "platform/fmwrapper/FMWrapper.h"
#include "workbench/crash_guard.h"
#include "workbench/failure.h"
#include "workbench/filemaker_names.h"

namespace workbench {
namespace {

using calculation::Decimal;
using calculation::Text;
using calculation::Value;

fmx::host::Value ToHost(const Value& value) {
  const bool is_number = std::holds_alternative<Decimal>(value);
  return {is_number ? kFMX_NumberType : kFMX_TextType,
          std::u16string(calculation::AsText(value).view())};
}

Value FromHost(const fmx::host::Value& value) {
  if (value.type != kFMX_NumberType) return Text(value.text);
  const auto number = Decimal::FromText(calculation::ToUtf8(value.text));
  return number ? Value(*number) : Value(Text(value.text));
}

fmx::host::Outcome Evaluate(const fmx::host::Function& function, const std::string& name,
                            const std::vector<fmx::host::Value>& parameters) {
  const CrashGuard guard(name + ": the plug-in crashed");
  try {
    return fmx::host::Evaluate(function, parameters);
  } catch (const std::exception& error) {
    throw Failure(Status::kWrong, name + ": the plug-in threw an exception: " + error.what());
  }
}

}  // namespace

PluginFunctions::PluginFunctions(User& user) : user_(user), functions_(fmx::host::Functions()) {
  for (const fmx::host::Function& function : functions_) {
    signatures_.push_back({calculation::ToUtf8(function.name), function.minimum_arguments,
                           function.maximum_arguments, calculation::ToUtf8(function.prototype)});
  }
}

Value PluginFunctions::Call(std::size_t index, const std::vector<Value>& arguments) {
  std::vector<fmx::host::Value> parameters;
  parameters.reserve(arguments.size());
  for (const Value& argument : arguments) parameters.push_back(ToHost(argument));
  const std::string& name = signatures_[index].name;
  const fmx::host::Outcome outcome = Evaluate(functions_[index], name, parameters);
  user_.CheckDialogs();
  if (outcome.error != 0) {
    throw Failure(Status::kWrong,
                  name + ": the plug-in answered error code " + std::to_string(outcome.error));
  }
  return FromHost(outcome.result);
}

Value PluginFunctions::Get(std::string_view name) const {
  const Rect screen = user_.Screen();
  if (name == "Get ( ScreenHeight )") return Decimal(screen.bottom - screen.top);
  if (name == "Get ( ScreenWidth )") return Decimal(screen.right - screen.left);
  const auto known = known_.find(name);
  return known == known_.end() ? Value() : known->second;
}

bool PluginFunctions::IsLeftOut(std::string_view name) const { return IsFileMakerFunction(name); }

}  // namespace workbench
