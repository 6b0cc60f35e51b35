#pragma once

#include <span>
#include <string_view>

#include "calculation/evaluator.h"

namespace calculation {

// A function of the language itself. Let alone is none: it binds names.
struct BuiltIn {
  std::u16string_view name;
  int minimum_arguments;
  int maximum_arguments;  // -1: as many as one likes
  Value (*evaluate)(const Arguments& arguments);
  bool takes_lists = false;  // an argument may be [ a ; b ]
};

std::span<const BuiltIn> BuiltIns();

// Without regard to case; null if there is none.
const BuiltIn* FindBuiltIn(std::u16string_view name);

}  // namespace calculation
