// Where wrong calculations are wrong, and what is said of them.

#include <gtest/gtest.h>

#include "calculation/source.h"
#include "tests/calculation/fake_functions.h"

namespace calculation {
namespace {

constexpr long kMostRounds = 1000;

// The explanation of what is wrong; empty if nothing is.
std::string Explanation(std::string_view text, FakeFunctions& functions) {
  const Source source("", text);
  Variables variables;
  try {
    source.CheckEncoding();
    const NodePtr tree = Parse(source.text(), functions);
    Evaluator(functions, variables, kMostRounds).Evaluate(*tree);
    return "";
  } catch (const Error& error) {
    return source.Explain(error);
  }
}

std::string Explanation(std::string_view text) {
  FakeFunctions functions;
  return Explanation(text, functions);
}

struct Mistake {
  const char* calculation;
  int line;
  int column;
  const char* words;  // that the message holds
};

TEST(CalculationErrorTest, NamesThePlaceAndWhatWasExpected) {
  const Mistake cases[] = {
      {"", 1, 1, "expected a value"},
      {"// nothing", 1, 1, "expected a value"},
      {"1 +", 1, 4, "unexpected end; expected a value"},
      {"1 + * 2", 1, 5, "unexpected \"*\"; expected a value"},
      {"1 2", 1, 3, "expected an operator"},
      {"\"a\" \"b\"", 1, 5, "unexpected text; expected an operator"},
      {"(1", 1, 3, "expected an operator or \")\""},
      {"1)", 1, 2, "unexpected \")\""},
      {"Echo ( 1 ", 1, 9, "\";\" or \")\""},
      {"Echo 1", 1, 6, "expected \"(\""},
      {"Echo ( 1, 2 )", 1, 9, "expected \";\""},
      {"Echo ( ; )", 1, 8, "expected a value"},
      {"Echo ( )", 1, 1, "Echo expects 1 parameter, not 0"},
      {"1 & echo ( 1 ; 2 )", 1, 5, "expects 1 parameter, not 2"},
      {"EchoAny ( 1 ; 2 ; 3 )", 1, 1, "expects 0 to 2 parameters, not 3"},
      {"Case ( 1 )", 1, 1, "expects at least 2 parameters, not 1"},
      {"Sum ( )", 1, 1, "expects at least 1 parameter, not 0: Sum ( number1 {; number2 ; ...} )"},
      {"Left ( 1 )", 1, 1, "not 1: Left ( text ; count )"},
      {"Echo ( 1 ; 2 )", 1, 1, "not 2: Echo(value)"},
      {"Lsit ( 1 )", 1, 1, "did you mean List?"},
      {"JSONSet ( 1 )", 1, 1, "did you mean JSONSetElement?"},
      {"1 & Pi", 1, 5, "Pi: FileMaker has this, the workbench does not"},
      {"Get ( FoundCount )", 1, 1, "FileMaker has this"},
      {"Get ( CurentDate )", 1, 1, "did you mean Get ( CurrentDate )?"},
      {"Customers::Name", 1, 1, "a field: FileMaker has this"},
      {"While ( i = 0 ; 1 ; i = 1 ; i )", 1, 1, "go round too often"},
      {"SetRecursion ( While ( i = 0 ; i < 4 ; i = i + 1 ; i ) ; 3 )", 1, 16, "go round too often"},
      {"While ( i = 0 ; i < n ; n = 2 ; i )", 1, 21, "unknown name \"n\""},
      {"JSONSetElement ( 1 ; [ 2 ; 3 ] )", 1, 22, "[ path ; value ; type ]"},
      {"JSONSetElement ( 1 ; 2 ; 3 )", 1, 1, "( json ; [ path ; value ; type ] ; … )"},
      {"$x[0]", 1, 4, "expected a repetition"},
      {"${x", 1, 1, "expected \"}\""},
      {"1e400", 1, 1, "too large"},
      {"12e", 1, 3, "unexpected characters in a number"},
      {"Date ( 1 ; 1 ; 4001 )", 1, 1, "years 1 to 4000"},
      {"GetAsDate ( \"2/30/2024\" )", 1, 1, "\"2/30/2024\" is no date"},
      {"GetAsTime ( \"soon\" )", 1, 1, "is no time"},
      {"Ecko ( 1 )", 1, 1, "there is no function \"Ecko\"; did you mean Echo?"},
      {"Substitue ( 1 ; 2 ; 3 )", 1, 1, "did you mean Substitute?"},
      {"LET ( 1 = 2 ; 3 )", 1, 7, "expected a name"},
      {"Let ( a 1 ; 3 )", 1, 9, "expected \"=\""},
      {"Let ( [ a = 1 b = 2 ] ; 3 )", 1, 15, "\";\" or \"]\""},
      {"Let ( total = 1 ; totel )", 1, 19, "did you mean total?"},
      {"Let ( a = 1 ; a ) & a", 1, 21, "unknown name \"a\""},
      {"Hello", 1, 1, "double quotes"},
      {"Substitute ( \"a\" ; [ \"b\" ] )", 1, 20, "[ search ; replacement ]"},
      {"Substitute ( [ 1 ; 2 ] ; 3 ; 4 )", 1, 1, "expects ( text"},
      {"Substitute ( 1 ; 2 )", 1, 1, "expects ( text"},
      {"Left ( [ 1 ; 2 ] ; 3 )", 1, 8, "unexpected \"[\""},
      {"\"abc", 1, 1, "expected a closing \""},
      {"\"a\" & \"b\n\n", 1, 7, "the text has no end"},
      {"1 /* a", 1, 3, "expected \"*/\""},
      {"“a”", 1, 1, "expected \""},
      {"'a'", 1, 1, "expected \""},
      {"1 ? 2", 1, 3, "unexpected character"},
      {"12abc", 1, 3, "unexpected characters in a number"},
      {"1.2.3", 1, 4, "unexpected characters in a number"},
      {"$ & 1", 1, 1, "variable's name"},
      {"1 / 0", 1, 3, "division by zero"},
      {"1 + Mod ( 5 ; 0 )", 1, 5, "division by zero"},
      {"9 ^ 9 ^ 9 ^ 9", 1, 11, "too large"},
      {"0 ^ -1", 1, 3, "division by zero"},
      {"-1 & (-1) ^ .5", 1, 11, "no number"},
      {"Char ( -1 )", 1, 1, "0 to 1114111"},
      {"1 &\n  2 &\r\n  Ecko ( 3 )", 3, 3, "no function"},
      {"\"日本😀\" & x", 1, 9, "unknown name"},
      {"\xEF\xBB\xBFx", 1, 1, "unknown name"},
      {"1 + \xFF", 1, 5, "not UTF-8"},
  };
  for (const auto& [calculation, line, column, words] : cases) {
    const std::string explanation = Explanation(calculation);
    const std::string place =
        "line " + std::to_string(line) + ", column " + std::to_string(column) + ": ";
    EXPECT_TRUE(explanation.starts_with(place)) << calculation << "\n" << explanation;
    EXPECT_NE(explanation.find(words), std::string::npos) << calculation << "\n" << explanation;
  }
}

TEST(CalculationErrorTest, UnderlinesThePlace) {
  EXPECT_EQ(Explanation("1 &\n\t\"日本\" & Ecko ( 1 )"),
            "line 2, column 9: there is no function \"Ecko\"; did you mean Echo?\n"
            "   \"日本\" & Ecko ( 1 )\n"
            "            ^^^^");
  EXPECT_EQ(Explanation("\"e\u0301 👩‍🚀\" & e\u0301"),
            "line 1, column 9: unknown name \"e\u0301\"; a text stands in double quotes\n"
            "  \"e\u0301 👩‍🚀\" & e\u0301\n"
            "           ^");
  EXPECT_EQ(Explanation("(\x1B[31m"),
            "line 1, column 2: unexpected character; expected a value or an operator\n"
            "  ( [31m\n"
            "   ^");
}

TEST(CalculationErrorTest, ALongLineIsShownAroundThePlace) {
  const std::string explanation =
      Explanation(std::string(100'000, ' ') + "x" + std::string(100'000, ' '));
  EXPECT_TRUE(explanation.starts_with("line 1, column 100001: "));
  EXPECT_LT(explanation.size(), 400u);
}

TEST(CalculationErrorTest, NothingIsCalledBeforeAllIsChecked) {
  FakeFunctions functions;
  EXPECT_NE(Explanation("Echo ( 1 ) & Echo ( 1 ; 2 )", functions), "");
  EXPECT_NE(Explanation("If ( Echo ( 1 ) ; 2 ; unknown )", functions), "");
  EXPECT_NE(Explanation("Echo ( 1 ) & \"", functions), "");
  EXPECT_TRUE(functions.calls.empty());
}

std::string Repeat(std::string_view text, int times) {
  std::string all;
  for (int i = 0; i < times; ++i) all += text;
  return all;
}

TEST(CalculationErrorTest, NestingIsLimitedAndLengthIsNot) {
  const int most = Parser::kDeepestNesting;
  EXPECT_EQ(Explanation(Repeat("(", most - 1) + "1" + Repeat(")", most - 1)), "");
  EXPECT_EQ(Explanation(Repeat("Echo(1 or 1 and 1 = 1 & 1 + 1 * 1 ^ ", most - 1) + "1" +
                        Repeat(")", most - 1)),
            "");
  for (const char* opening : {"(", "Echo(", "-", "not ", "2^-", "Let(a=", "If(1;", "1 + ("}) {
    EXPECT_NE(Explanation(Repeat(opening, 5000)).find("nested more than 200 levels"),
              std::string::npos)
        << opening;
  }
  EXPECT_EQ(Explanation("1" + Repeat(" & 1", 20'000)), "");
  EXPECT_EQ(Explanation("1" + Repeat("^1", 20'000)), "");
  EXPECT_EQ(Explanation("Let ( [ a0 = 1" + Repeat("; a0 = a0", 20'000) + " ] ; a0 )"), "");
  EXPECT_EQ(Explanation("List ( 1" + Repeat("; 1", 20'000) + ")"), "");
}

TEST(CalculationErrorTest, NumbersHaveAtMost400Digits) {
  EXPECT_EQ(Explanation(Repeat("9", 400)), "");
  EXPECT_NE(Explanation(Repeat("9", 401)).find("at most 400"), std::string::npos);
  EXPECT_EQ(Explanation("." + Repeat("9", 500) + " + " + Repeat("0", 500) + "1"), "");
  EXPECT_NE(Explanation(Repeat("9", 400) + " + 1").find("too large"), std::string::npos);
  EXPECT_NE(Explanation("\"" + Repeat("9", 99'999) + "\" + 1").find("too large"),
            std::string::npos);
}

// A search that began anew at every character would take hours here.
TEST(CalculationErrorTest, SearchingTakesTimeInProportion) {
  EXPECT_EQ(Explanation("Let ( [ a = \"aaaaaaaaaaaaaaaa\"" + Repeat("; a = a & a", 16) +
                        " ] ; Position ( a ; Left ( a ; 500000 ) & \"b\" ; 1 ; 1 ) )"),
            "");
}

}  // namespace
}  // namespace calculation
