#include "workbench/plugin_functions.h"

#include <algorithm>
#include <cstddef>
#include <exception>
#include <string>
#include <utility>
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

// The bytes of the parameter's UTF-8 that come from no literal; neighbours are one.
std::vector<std::pair<std::size_t, std::size_t>> DataOf(
    std::u16string_view parameter, const std::vector<calculation::Piece>& pieces) {
  std::vector<std::pair<std::size_t, std::size_t>> data;
  std::size_t unit = 0;
  std::size_t byte = 0;
  for (const calculation::Piece& piece : pieces) {
    const std::size_t end =
        byte +
        calculation::ToUtf8(parameter.substr(std::min(unit, parameter.size()), piece.units)).size();
    if (!piece.is_literal && !data.empty() && data.back().second == byte) {
      data.back().second = end;
    } else if (!piece.is_literal) {
      data.emplace_back(byte, end);
    }
    unit += piece.units;
    byte = end;
  }
  return data;
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
  if (listener_) Tell(name, parameters, outcome.result);
  user_.CheckDialogs();
  if (outcome.error != 0) {
    throw Failure(Status::kWrong,
                  name + ": the plug-in answered error code " + std::to_string(outcome.error));
  }
  return FromHost(outcome.result);
}

void PluginFunctions::Tell(const std::string& name, const std::vector<fmx::host::Value>& parameters,
                           const fmx::host::Value& result) {
  const std::u16string_view parameter =
      parameters.empty() ? std::u16string_view() : parameters.front().text;
  listener_->Called({{name, calculation::ToUtf8(parameter), calculation::ToUtf8(result.text),
                      user_.TakeShown(), DataOf(parameter, place_.pieces)},
                     place_});
}

int PluginFunctions::ShowMessage(calculation::Span place, const std::string& title,
                                 const std::string& message,
                                 const std::vector<std::string>& buttons) {
  const int button = user_.ShowMessage(title, message, buttons);
  auto dialog = user_.TakeShown();
  if (listener_)
    listener_->Called({{"Show Custom Dialog", "", "", std::move(dialog)}, {place, {}}});
  return button;
}

Value PluginFunctions::Get(std::string_view name) const {
  const bool is_height = name == "Get ( ScreenHeight )";
  if (is_height || name == "Get ( ScreenWidth )") {
    const Rect screen = user_.Screen();  // which may start a display
    return Decimal(is_height ? screen.bottom - screen.top : screen.right - screen.left);
  }
  const auto known = known_.find(name);
  return known == known_.end() ? Value() : known->second;
}

bool PluginFunctions::IsLeftOut(std::string_view name) const { return IsFileMakerFunction(name); }

}  // namespace workbench
