#include "calculation/built_ins.h"

#include <algorithm>
#include <array>

#include "calculation/unicode.h"

namespace calculation {

Arity ArityOf(const BuiltIn& function) {
  const std::string_view parameters = function.parameters;
  if (parameters.empty()) return {0, 0};
  const auto count = [](std::string_view part) {
    return static_cast<int>(std::count(part.begin(), part.end(), ';'));
  };
  const int minimum =
      parameters.starts_with('{') ? 0 : 1 + count(parameters.substr(0, parameters.find('{')));
  return {minimum, parameters.find("...") == std::string_view::npos ? 1 + count(parameters) : -1};
}

std::string Prototype(const BuiltIn& function) {
  const std::string parameters(function.parameters);
  return ToUtf8(function.name) + (parameters.empty() ? "" : " ( " + parameters + " )");
}

std::span<const BuiltInGroup> BuiltInGroups() {
  static const std::array groups{kTextFunctions, kListFunctions,    kNumberFunctions,
                                 kDateFunctions, kLogicalFunctions, kJsonFunctions,
                                 kGetFunctions};
  return groups;
}

const BuiltIn* FindBuiltIn(std::u16string_view name) {
  for (const BuiltInGroup& group : BuiltInGroups()) {
    for (const BuiltIn& function : group.functions) {
      if (IsSameName(function.name, name)) return &function;
    }
  }
  return nullptr;
}

std::vector<std::string> BuiltInNames() {
  std::vector<std::string> names;
  for (const BuiltInGroup& group : BuiltInGroups()) {
    for (const BuiltIn& function : group.functions) names.push_back(ToUtf8(function.name));
  }
  return names;
}

}  // namespace calculation
