// The functions of the language that choose, bind names and evaluate.

#include "calculation/built_ins.h"

namespace calculation {
namespace {

// Pairs of a test and a result, then the result if no test holds.
Value Case(const Arguments& given) {
  std::size_t i = 0;
  for (; given.Has(i + 1); i += 2) {
    if (given.IsTrue(i)) return given.Get(i + 1);
  }
  return given.Has(i) ? given.Get(i) : Value();
}

Value Choose(const Arguments& given) {
  const long choice = given.Integer(0);
  if (choice < 0 || choice >= static_cast<long>(given.size()) - 1) return {};
  return given.Get(static_cast<std::size_t>(choice) + 1);
}

// A calculation that is wrong has the result that FileMaker shows for one.
Value Evaluate(const Arguments& given) {
  const Text calculation = given.Text(0);
  try {
    return given.evaluator().EvaluateText(calculation);
  } catch (const Error&) {
    return Text(u"?");
  }
}

constexpr BuiltIn kLogicalRows[] = {
    {u"Case", "test1 ; result1 {; test2 ; result2 ; ... ; default}",
     "the result of the first test that holds; a last result alone is for when none does",
     R"(Case ( 0 ; "a" ; 1 ; "b" ; "c" ))", Case},
    {u"Choose", "number ; result0 {; result1 ; ...}", "the result with this number, counted from 0",
     R"(Choose ( 1 ; "a" ; "b" ))", Choose},
    {u"Evaluate", "calculation {; fields}",
     "the result of the calculation that the text holds, or ? if it is wrong; it sees $variables "
     "and no names of Let",
     R"(Evaluate ( "1 + 2" ))", Evaluate},
    {u"False", "", "0", "False", [] { return false; }},
    {u"If", "test ; result1 {; result2}", "result1 if the test holds, else result2",
     R"(If ( 1 < 2 ; "yes" ; "no" ))",
     [](const Arguments& given) {
       if (given.IsTrue(0)) return given.Get(1);
       return given.Has(2) ? given.Get(2) : Value();
     }},
    {u"IsEmpty", "value", "1 if the value is an empty text", R"(IsEmpty ( "" ))",
     [](const Text& text) { return text.empty(); }},
    {u"Let", "[ name1 = value1 ; name2 = value2 ; ... ] ; calculation",
     "a calculation in which the names stand for the values; $names are set as variables",
     "Let ( [ a = 3 ; b = a * 2 ] ; a + b )", nullptr},
    {u"SetRecursion", "calculation ; rounds",
     "the calculation's result; its loops must not go round more often",
     "SetRecursion ( While ( i = 0 ; i < 9 ; i = i + 1 ; i ) ; 10 )",
     [](const Arguments& given) {
       return given.evaluator().EvaluateWithin(given.Integer(1), given.node(0));
     }},
    {u"True", "", "1", "True", [] { return true; }},
    {u"While", "[ name1 = value1 ; ... ] ; test ; [ name1 = value1 ; ... ] ; result",
     "the result when, after as many rounds as the test holds, the second values have been given "
     "to the names in each",
     R"(While ( [ i = 0 ; t = "" ] ; i < 3 ; [ i = i + 1 ; t = t & i ] ; t ))", nullptr},
};

}  // namespace

constexpr BuiltInGroup kLogicalFunctions{"Logic", kLogicalRows};

}  // namespace calculation
