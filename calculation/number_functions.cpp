// The functions of the language that work on numbers.

#include "calculation/built_ins.h"

namespace calculation {
namespace {

Value Furthest(const Arguments& given, int sign) {
  Value furthest = given.Get(0);
  for (std::size_t i = 1; given.Has(i); ++i) {
    const Value value = given.Get(i);
    if (Compare(AsNumber(value), AsNumber(furthest)) * sign > 0) furthest = value;
  }
  return std::holds_alternative<Text>(furthest) ? AsNumber(furthest) : furthest;
}

// The numbers' sum, and how many there are: what is empty is none.
struct Total {
  Decimal sum;
  long count = 0;
};

Total TotalOf(const Arguments& given) {
  Total total;
  for (std::size_t i = 0; given.Has(i); ++i) {
    const Value value = given.Get(i);
    if (AsText(value).empty()) continue;
    total.sum = total.sum + AsNumber(value);
    ++total.count;
  }
  return total;
}

constexpr BuiltIn kNumberRows[] = {
    {u"Abs", "number", "the number without its sign", "Abs ( -4 )",
     [](const Decimal& number) { return number.IsNegative() ? -number : number; }},
    {u"Average", "number1 {; number2 ; ...}", "the sum of what is not empty, divided by its count",
     R"(Average ( 1 ; "" ; 2 ))",
     [](const Arguments& given) -> Value {
       const Total total = TotalOf(given);
       return total.count == 0 ? Value() : total.sum / Decimal(total.count);
     }},
    {u"Ceiling", "number", "the next whole number that is not below", "Ceiling ( 1.25 )",
     [](const Decimal& number) { return -(-number).Floor(); }},
    {u"Div", "number ; divisor", "how often the divisor goes into the number, rounded downwards",
     "Div ( -7 ; 2 )",
     [](const Decimal& number, const Decimal& divisor) { return FloorQuotient(number, divisor); }},
    {u"Floor", "number", "the next whole number that is not above", "Floor ( -1.25 )",
     [](const Decimal& number) { return number.Floor(); }},
    {u"GetAsBoolean", "value", "1 if the value's number is not 0", R"(GetAsBoolean ( "no" ))",
     [](bool truth) { return truth; }},
    {u"GetAsNumber", "text", "the number that the text's digits make", R"(GetAsNumber ( "1e3" ))",
     [](const Decimal& number) { return number; }},
    {u"Int", "number", "the number without what is behind its point", "Int ( -3.9 )",
     [](const Decimal& number) { return number.Truncated(); }},
    {u"Max", "number1 {; number2 ; ...}", "the greatest of the numbers", "Max ( 2 ; 10 ; 3 )",
     [](const Arguments& given) { return Furthest(given, 1); }},
    {u"Min", "number1 {; number2 ; ...}", "the least of the numbers", "Min ( 2 ; 10 ; -3 )",
     [](const Arguments& given) { return Furthest(given, -1); }},
    {u"Mod", "number ; divisor", "what remains of a division, with the divisor's sign",
     "Mod ( -7 ; 3 )",
     [](const Decimal& number, const Decimal& divisor) { return Remainder(number, divisor); }},
    {u"Round", "number ; places", "the number rounded to so many places behind its point",
     "Round ( 2.345 ; 2 )",
     [](const Decimal& number, long places) { return number.Rounded(places); }},
    {u"Sum", "number1 {; number2 ; ...}", "the numbers' sum", "Sum ( 1 ; 2.5 ; 3 )",
     [](const Arguments& given) { return TotalOf(given).sum; }},
    {u"Truncate", "number ; places", "the number with so many places behind its point",
     "Truncate ( -2.349 ; 2 )",
     [](const Decimal& number, long places) { return number.Truncated(places); }},
};

}  // namespace

constexpr BuiltInGroup kNumberFunctions{"Numbers", kNumberRows};

}  // namespace calculation
