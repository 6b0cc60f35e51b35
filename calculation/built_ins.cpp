#include "calculation/built_ins.h"

#include <algorithm>

#include "calculation/list_functions.h"
#include "calculation/text_functions.h"
#include "calculation/unicode.h"

namespace calculation {
namespace {

constexpr int kAnyNumber = -1;

Value Abs(const Arguments& arguments) {
  const Decimal number = arguments.Number(0);
  return number.IsNegative() ? -number : number;
}

// Pairs of a test and a result, then the result where no test holds.
Value Case(const Arguments& arguments) {
  std::size_t i = 0;
  for (; arguments.Has(i + 1); i += 2) {
    if (arguments.IsTrue(i)) return arguments.Get(i + 1);
  }
  return arguments.Has(i) ? arguments.Get(i) : Value();
}

Value Choose(const Arguments& arguments) {
  const long long choice = arguments.Integer(0);
  const long long results = static_cast<long long>(arguments.size()) - 1;
  if (choice < 0 || choice >= results) return {};
  return arguments.Get(static_cast<std::size_t>(choice) + 1);
}

Value GetAsNumber(const Arguments& arguments) { return arguments.Number(0); }

Value GetAsText(const Arguments& arguments) { return arguments.Text(0); }

Value If(const Arguments& arguments) {
  if (arguments.IsTrue(0)) return arguments.Get(1);
  return arguments.Has(2) ? arguments.Get(2) : Value();
}

Value Int(const Arguments& arguments) { return arguments.Number(0).Truncated(); }

Value IsEmpty(const Arguments& arguments) { return Truth(arguments.Text(0).empty()); }

Value Furthest(const Arguments& arguments, int sign) {
  Decimal furthest = arguments.Number(0);
  for (std::size_t i = 1; arguments.Has(i); ++i) {
    const Decimal number = arguments.Number(i);
    if (Compare(number, furthest) * sign > 0) furthest = number;
  }
  return furthest;
}

Value Max(const Arguments& arguments) { return Furthest(arguments, 1); }

Value Min(const Arguments& arguments) { return Furthest(arguments, -1); }

// What remains has the divisor's sign.
Value Mod(const Arguments& arguments) {
  const Decimal number = arguments.Number(0);
  const Decimal divisor = arguments.Number(1);
  const Decimal rest = number - divisor * (number / divisor).Truncated();
  return rest.IsZero() || rest.IsNegative() == divisor.IsNegative() ? rest : rest + divisor;
}

Value Round(const Arguments& arguments) {
  const Decimal number = arguments.Number(0);
  return number.Rounded(arguments.Integer(1));
}

Value True(const Arguments&) { return Truth(true); }

Value False(const Arguments&) { return Truth(false); }

constexpr BuiltIn kBuiltIns[] = {
    {u"Abs", 1, 1, Abs},
    {u"Case", 2, kAnyNumber, Case},
    {u"Char", 1, 1, CharFunction},
    {u"Choose", 2, kAnyNumber, Choose},
    {u"Code", 1, 1, CodeFunction},
    {u"Exact", 2, 2, ExactFunction},
    {u"False", 0, 0, False},
    {u"GetAsNumber", 1, 1, GetAsNumber},
    {u"GetAsText", 1, 1, GetAsText},
    {u"GetValue", 2, 2, GetValueFunction},
    {u"If", 2, 3, If},
    {u"Int", 1, 1, Int},
    {u"IsEmpty", 1, 1, IsEmpty},
    {u"Left", 2, 2, LeftFunction},
    {u"LeftValues", 2, 2, LeftValuesFunction},
    {u"Length", 1, 1, LengthFunction},
    {u"List", 1, kAnyNumber, ListFunction},
    {u"Lower", 1, 1, LowerFunction},
    {u"Max", 1, kAnyNumber, Max},
    {u"Middle", 3, 3, MiddleFunction},
    {u"MiddleValues", 3, 3, MiddleValuesFunction},
    {u"Min", 1, kAnyNumber, Min},
    {u"Mod", 2, 2, Mod},
    {u"PatternCount", 2, 2, PatternCountFunction},
    {u"Position", 4, 4, PositionFunction},
    {u"Quote", 1, 1, QuoteFunction},
    {u"Replace", 4, 4, ReplaceFunction},
    {u"Right", 2, 2, RightFunction},
    {u"RightValues", 2, 2, RightValuesFunction},
    {u"Round", 2, 2, Round},
    {u"Substitute", 2, kAnyNumber, SubstituteFunction, true},
    {u"Trim", 1, 1, TrimFunction},
    {u"True", 0, 0, True},
    {u"Upper", 1, 1, UpperFunction},
    {u"ValueCount", 1, 1, ValueCountFunction},
};

}  // namespace

std::span<const BuiltIn> BuiltIns() { return kBuiltIns; }

const BuiltIn* FindBuiltIn(std::u16string_view name) {
  const auto* found = std::find_if(
      std::begin(kBuiltIns), std::end(kBuiltIns),
      [name](const BuiltIn& known) { return CompareIgnoringCase(known.name, name) == 0; });
  return found == std::end(kBuiltIns) ? nullptr : found;
}

}  // namespace calculation
