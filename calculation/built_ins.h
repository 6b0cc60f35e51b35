#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <vector>

#include "calculation/evaluator.h"

namespace calculation {

// The next argument as a value of this type, or all from it on. What may be left out is optional.
template <class Type>
Type Next(const Arguments& given, std::size_t& next) {
  const std::size_t index = next++;
  if constexpr (std::is_same_v<Type, Arguments>) return given.From(index);
  if constexpr (std::is_same_v<Type, Value>) return given.Get(index);
  if constexpr (std::is_same_v<Type, Text>) return given.Text(index);
  if constexpr (std::is_same_v<Type, Decimal>) return given.Number(index);
  if constexpr (std::is_same_v<Type, long>) return given.Integer(index);
  if constexpr (std::is_same_v<Type, bool>) return given.IsTrue(index);
  if constexpr (std::is_same_v<Type, std::optional<long>>) {
    return given.Has(index) ? Type(given.Integer(index)) : Type();
  }
}

// Calls what is written in C++ with the arguments, which are evaluated from the first to the last.
template <class Result, class... Types>
Value Call(Result (*function)(Types...), [[maybe_unused]] const Arguments& given) {
  [[maybe_unused]] std::size_t next = 0;
  const std::tuple<std::decay_t<Types>...> values{Next<std::decay_t<Types>>(given, next)...};
  if constexpr (std::is_convertible_v<Result, long>) {
    return Decimal(static_cast<long>(std::apply(function, values)));
  } else {
    return std::apply(function, values);
  }
}

// How a function of the language is computed: by a lambda or by Calling<a function>.
class Computation {
 public:
  using Function = Value(const Arguments& given);

  constexpr Computation(Function* function) : function_(function) {}  // NOLINT
  template <class Lambda>
  requires std::is_empty_v<Lambda>
  constexpr Computation(Lambda)  // NOLINT(google-explicit-constructor): stands in tables
      : function_([](const Arguments& given) { return Call(+Lambda{}, given); }) {}

  constexpr operator Function*() const { return function_; }  // NOLINT

 private:
  Function* function_;
};

template <auto function>
Value Calling(const Arguments& given) {
  return Call(function, given);
}

// A function of the language itself.
struct BuiltIn {
  std::u16string_view name;      // of Get's: "Get ( CurrentDate )"
  std::string_view parameters;   // as they are typed, separated by ; with { } around those that may
                                 // be left out, and ... if there may be any number
  std::string_view description;  // what it results in, as a clause
  std::string_view example;      // a calculation; none for what is different every time
  Computation evaluate;          // null of Let and While, which bind names
  std::size_t list_items = 0;    // in place of all arguments but the first, lists of so many
  bool takes_styles = false;     // names of text styles stand for values
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
