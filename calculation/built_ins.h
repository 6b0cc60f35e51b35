#pragma once

#include <span>
#include <string_view>
#include <vector>

#include "calculation/evaluator.h"

namespace calculation {

// A function of the language itself.
struct BuiltIn {
  std::u16string_view name;      // of Get's: "Get ( CurrentDate )"
  std::string_view parameters;   // as they are typed, separated by ; with { } around those that may
                                 // be left out, and ... if there may be any number
  std::string_view description;  // what it results in, as a clause
  std::string_view example;      // a calculation; none for what is different every time
  Value (*evaluate)(const Arguments& arguments);  // null of Let and While, which bind names
  std::size_t list_items = 0;  // in place of all arguments but the first, lists of so many
  bool takes_styles = false;   // names of text styles stand for values
};

// How many arguments a function takes.
struct Arity {
  int minimum;
  int maximum;  // -1: as many as one likes
};
Arity ArityOf(const BuiltIn& function);

// "Left ( text ; count )"
std::string Prototype(const BuiltIn& function);

struct BuiltInGroup {
  std::string_view title;
  std::span<const BuiltIn> functions;  // by name
};

// Every function of the language, with all that there is to know of it.
std::span<const BuiltInGroup> BuiltInGroups();

// Without regard to case; null if there is none.
const BuiltIn* FindBuiltIn(std::u16string_view name);

std::vector<std::string> BuiltInNames();

// The groups, each in a file of its own.
extern const BuiltInGroup kDateFunctions;
extern const BuiltInGroup kGetFunctions;
extern const BuiltInGroup kJsonFunctions;
extern const BuiltInGroup kListFunctions;
extern const BuiltInGroup kLogicalFunctions;
extern const BuiltInGroup kNumberFunctions;
extern const BuiltInGroup kTextFunctions;

}  // namespace calculation
