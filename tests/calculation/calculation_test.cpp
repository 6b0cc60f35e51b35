// What right calculations result in.

#include <gtest/gtest.h>

#include "tests/calculation/fake_functions.h"

namespace calculation {
namespace {

struct Case {
  const char* calculation;
  const char* result;
};

void Check(std::initializer_list<Case> cases) {
  for (const auto& [calculation, result] : cases) {
    try {
      EXPECT_EQ(Result(calculation), result) << calculation;
    } catch (const Error& error) {
      ADD_FAILURE() << calculation << " is refused: " << error.what();
    }
  }
}

TEST(CalculationTest, LiteralsSayWhatTheyMean) {
  Check({
      {R"("plain")", "text:plain"},
      {R"("")", "text:"},
      {R"("a\"b\\c\¶d")", "text:a\"b\\c¶d"},
      {R"("\n\q\")"
       R"(")",
       "text:\\n\\q\""},
      {"\"a¶b\" & ¶", "text:a\rb\r"},
      {"\"a\nb\rc\r\nd\"", "text:a\rb\rc\rd"},
      {"\"// no /* comment */\"", "text:// no /* comment */"},
      {"\"grüße 日本 😀\"", "text:grüße 日本 😀"},
      {"007", "number:7"},
      {".50", "number:.5"},
      {"3.", "number:3"},
      {"0.00", "number:0"},
      {"123456789012345678901234567890.123456789",
       "number:123456789012345678901234567890.123456789"},
  });
}

TEST(CalculationTest, BlanksAndCommentsStandAnywhere) {
  Check({
      {"  1 // one\n + /* two\nand */ 2 // three", "number:3"},
      {"/**/1", "number:1"},
      {"\t1\r\n+\r1\xC2\xA0", "number:2"},
      {"\xEF\xBB\xBF 1", "number:1"},
  });
}

TEST(CalculationTest, OperatorsBindFromPowerToOr) {
  Check({
      {"1 + 2 * 3", "number:7"},
      {"(1 + 2) * 3", "number:9"},
      {"10 - 3 - 2", "number:5"},
      {"100 / 10 / 5", "number:2"},
      {"2 ^ 3 ^ 2", "number:64"},
      {"-2 ^ 2", "number:-4"},
      {"2 ^ -1", "number:.5"},
      {"- - 3", "number:3"},
      {"+ 3 - -3", "number:6"},
      {"1 + 1 & 2 * 2", "text:24"},
      {"1 & 2 = 12", "number:1"},
      {"\"a\" & 1 = \"A1\"", "number:1"},
      {"1 < 2 and 3 > 4", "number:0"},
      {"1 or 1 and 0", "number:1"},
      {"1 xor 1 or 0", "number:0"},
      {"not 0 = 1", "number:1"},
      {"not 1 or 1", "number:1"},
      {"NOT 1 Or 0 AND 1", "number:0"},
  });
}

TEST(CalculationTest, NumbersAreDecimalAndExact) {
  Check({
      {"0.1 + 0.2", "number:.3"},
      {"1 / 3", "number:.3333333333333333"},
      {"2 / 3", "number:.6666666666666667"},
      {"-2 / 3", "number:-.6666666666666667"},
      {"1 / 8", "number:.125"},
      {"0 / 5", "number:0"},
      {"100 * 1.10", "number:110"},
      {"5 - 7.25", "number:-2.25"},
      {"1000 - 999.999", "number:.001"},
      {"99999999999999999999 + 1", "number:100000000000000000000"},
      {"2 ^ 128", "number:340282366920938463463374607431768211456"},
      {"2 ^ .5", "number:1.414213562373095"},
      {"0 ^ 0", "number:1"},
      {"0.5 ^ 1000000000000", "number:0"},
      {"-0", "number:0"},
      {"Round ( 2.5 ; 0 ) & Round ( -2.5 ; 0 )", "text:3-3"},
      {"Round ( 1250 ; -2 ) & \" \" & Round ( 9.996 ; 2 ) & \" \" & Round ( 4 ; -1 )",
       "text:1300 10 0"},
      {"Int ( -3.9 ) & Int ( 0.9 ) & Abs ( -4 )", "text:-304"},
      {"Mod ( 7 ; 3 ) & Mod ( -7 ; 3 ) & Mod ( 7 ; -3 ) & Mod ( 6 ; 3 )", "text:12-20"},
      {"Max ( 2 ; 10 ; 3 ) & Min ( 2 ; 10 ; -3 )", "text:10-3"},
  });
}

// Against the machine's own arithmetic, with signs and sizes of every kind.
TEST(CalculationTest, WholeNumbersAgreeWithTheMachine) {
  unsigned long long seed = 88172645463325252ULL;
  const auto next = [&seed] {
    seed ^= seed << 13;
    seed ^= seed >> 7;
    seed ^= seed << 17;
    return static_cast<long long>(seed) >> (32 + seed % 31);
  };
  for (int i = 0; i < 2000; ++i) {
    const long long a = next();
    const long long b = next();
    const Decimal first(a);
    const Decimal second(b);
    ASSERT_EQ((first + second).ToText(), std::to_string(a + b)) << a << " " << b;
    ASSERT_EQ((first - second).ToText(), std::to_string(a - b)) << a << " " << b;
    ASSERT_EQ((first * second).ToText(), std::to_string(a * b)) << a << " " << b;
    ASSERT_EQ(Compare(first, second) < 0, a < b) << a << " " << b;
    if (b == 0) continue;
    ASSERT_EQ((first * second / second).ToText(), std::to_string(a)) << a << " " << b;
    ASSERT_EQ((first / second).ToInteger(), a / b) << a << " " << b;
  }
}

TEST(CalculationTest, TextsAndNumbersTurnIntoEachOther) {
  Check({
      {"\"3 apples\" + 1", "number:4"},
      {"\"1a2.5b.7\" + 0", "number:12.57"},
      {"\"minus -5\" + 0", "number:-5"},
      {"\"7-\" + 0", "number:7"},
      {"\"none\" + 0", "number:0"},
      {"GetAsNumber ( \"x12\" ) & GetAsText ( 1.50 )", "text:121.5"},
      {"\"abc\" or \"\"", "number:0"},
      {"\"1\" and 2", "number:1"},
      {"If ( \"no\" ; 1 ; 2 )", "number:2"},
  });
}

TEST(CalculationTest, ComparisonFollowsTheKindsOfItsSides) {
  Check({
      {"\"ABC\" = \"abc\"", "number:1"},
      {"\"Ähre Ω Я\" = \"ähre ω я\"", "number:1"},
      {"\"a\" < \"B\"", "number:1"},
      {"\"10\" < \"9\"", "number:1"},
      {"10 < 9", "number:0"},
      {"\"10\" > 9", "number:1"},
      {"\"01\" = 1", "number:1"},
      {"\"\" = 0", "number:0"},
      {"1.0 = 1", "number:1"},
      {"3 <> 4 and 3 ≠ 4", "number:1"},
      {"3 <= 3 and 3 ≤ 3 and 3 >= 3 and 3 ≥ 3", "number:1"},
      {"-1 < 0 and -2 < -1", "number:1"},
      {"Exact ( \"a\" ; \"A\" ) & Exact ( \"a\" ; \"a\" )", "text:01"},
      {"True & False & True ( )", "text:101"},
  });
}

TEST(CalculationTest, TextFunctions) {
  Check({
      {"Left ( \"abc\" ; 2 ) & Left ( \"abc\" ; 9 ) & Left ( \"abc\" ; -1 )", "text:ababc"},
      {"Right ( \"abc\" ; 2 ) & Right ( \"abc\" ; 9 ) & Right ( \"abc\" ; 0 )", "text:bcabc"},
      {"Middle ( \"abcdef\" ; 2 ; 3 )", "text:bcd"},
      {"Middle ( \"abc\" ; 0 ; 2 ) & Middle ( \"abc\" ; 3 ; 9 ) & Middle ( \"abc\" ; 4 ; 1 )",
       "text:abc"},
      {"Middle ( \"abc\" ; 999999999999999999999 ; 999999999999999999999 )", "text:"},
      {"Length ( \"grün\" ) + Length ( \"😀\" ) + Length ( 12.50 )", "number:9"},
      {"Position ( \"abcabc\" ; \"C\" ; 1 ; 1 )", "number:3"},
      {"Position ( \"abcabc\" ; \"c\" ; 1 ; 2 )", "number:6"},
      {"Position ( \"abcabc\" ; \"c\" ; 4 ; 1 )", "number:6"},
      {"Position ( \"abcabc\" ; \"a\" ; 6 ; -1 )", "number:4"},
      {"Position ( \"abcabc\" ; \"a\" ; 6 ; -2 )", "number:1"},
      {"Position ( \"abc\" ; \"x\" ; 1 ; 1 ) + Position ( \"abc\" ; \"\" ; 1 ; 1 )", "number:0"},
      {"PatternCount ( \"aAaA\" ; \"aa\" )", "number:2"},
      {"Substitute ( \"aXbX\" ; \"X\" ; \"\" )", "text:ab"},
      {"Substitute ( \"aaa\" ; \"aa\" ; \"b\" )", "text:ba"},
      {"Substitute ( \"abab!\" ; \"aba\" ; \"x\" )", "text:xb!"},
      {"Substitute ( \"x\" ; \"X\" ; \"y\" ) & Substitute ( \"a\" ; \"\" ; \"y\" )", "text:xa"},
      {"Substitute ( \"banana\" ; [ \"a\" ; \"o\" ] ; [ \"oo\" ; \"x\" ] ; [ \"n\" ; \"m\" ] )",
       "text:bomomo"},
      {"Replace ( \"abcdef\" ; 2 ; 3 ; \"X\" )", "text:aXef"},
      {"Char ( 65 ) & Char ( 8364 ) & Char ( 128512 )", "text:A€😀"},
      {"Char ( 13 ) = ¶", "number:1"},
      {"Code ( \"A\" ) & \" \" & Code ( \"😀\" ) & Code ( \"\" )", "text:65 128512"},
      {"Code ( \"ab\" ) & \" \" & Char ( 9800097 )", "text:9800097 ab"},
      {"Upper ( \"aé1\" ) & Lower ( \"AÉ1\" )", "text:AÉ1aé1"},
      {"Trim ( \"  a b \" ) & Trim ( \"  \" ) & IsEmpty ( \"\" )", "text:a b1"},
      {R"(Quote ( "a\"b\\¶" ))", R"(text:"a\"b\\¶")"},
  });
}

TEST(CalculationTest, ListFunctions) {
  Check({
      {"GetValue ( \"a¶b¶c\" ; 2 ) & GetValue ( \"a\" ; 2 ) & GetValue ( \"a\" ; 0 )", "text:b"},
      {"GetValue ( \"a¶¶c\" ; 2 ) & GetValue ( \"a¶¶c\" ; 3 )", "text:c"},
      {"ValueCount ( \"a¶b\" ) & ValueCount ( \"a¶b¶\" ) & ValueCount ( \"\" ) & ValueCount ( ¶ )",
       "text:2201"},
      {"LeftValues ( \"a¶b¶c\" ; 2 )", "text:a\rb\r"},
      {"RightValues ( \"a¶b¶c\" ; 2 ) & RightValues ( \"x\" ; 5 )", "text:b\rc\rx\r"},
      {"MiddleValues ( \"a¶b¶c¶d\" ; 2 ; 2 )", "text:b\rc\r"},
      {"List ( \"a\" ; \"\" ; \"b\" ; 3 )", "text:a\rb\r3"},
  });
}

TEST(CalculationTest, LetBindsNamesInsideItself) {
  Check({
      {"Let ( x = 3 ; x * x )", "number:9"},
      {"Let ( [ a = 1 ; b = a + 1 ; a = b * 10 ] ; a & b )", "text:202"},
      {"Let ( [ ] ; 5 )", "number:5"},
      {"Let ( [ a = 1 ; ] ; a )", "number:1"},
      {"Let ( x = 1 ; Let ( x = x + 1 ; x ) & x )", "text:21"},
      {"Let ( x = 1 ; x & Let ( y = 2 ; y ) & Let ( z = 3 ; x & z ) )", "text:1213"},
      {"Let ( Größe = 2 ; größe )", "number:2"},
      {"Let ( length = 2 ; length & Length ( \"abc\" ) )", "text:23"},
      {"Let ( same = 1 = 1 ; same )", "number:1"},
      {"Let ( [ $a = 1 ; $$b = $a + 1 ] ; $A & $$B )", "text:12"},
  });
}

TEST(CalculationTest, VariablesOutliveACalculation) {
  FakeFunctions functions;
  Variables variables;
  EXPECT_EQ(Result("$never", functions, variables), "text:");
  EXPECT_EQ(Result("Let ( $kept = 7 ; \"\" )", functions, variables), "text:");
  EXPECT_EQ(Result("$KEPT + 1", functions, variables), "number:8");
  EXPECT_EQ(Result("$$kept", functions, variables), "text:");
}

// A function that shows a dialog must be called once, in order, and only where its result matters.
TEST(CalculationTest, OnlyWhatMattersIsCalled) {
  const struct {
    const char* calculation;
    std::vector<std::string> calls;
  } cases[] = {
      {"ECHO ( \"a\" ) & echoblank ( 2 ) & EchoAny & EchoAny ( ) & EchoAny ( 1 ; 2 )",
       {"Echo<a>", "EchoBlank <2>", "EchoAny<", "EchoAny<", "EchoAny<1>2>"}},
      {"If ( Echo ( 1 ) ; Echo ( \"yes\" ) ; Echo ( \"no\" ) )", {"Echo<1>", "Echo<yes>"}},
      {"If ( 0 ; Echo ( 1 ) )", {}},
      {"Case ( Echo ( 0 ) ; Echo ( 1 ) ; Echo ( 2 ) ; Echo ( 3 ) ; Echo ( 4 ) )",
       {"Echo<0>", "Echo<2>", "Echo<3>"}},
      {"Choose ( 1 ; Echo ( 0 ) ; Echo ( 1 ) ; Echo ( 2 ) )", {"Echo<1>"}},
      {"0 and Echo ( 1 )", {}},
      {"1 or Echo ( 1 )", {}},
      {"1 xor Echo ( 1 )", {"Echo<1>"}},
      {"Left ( Echo ( \"abc\" ) ; Echo ( 1 ) )", {"Echo<abc>", "Echo<1>"}},
      {"Let ( x = Echo ( 5 ) ; x & x )", {"Echo<5>"}},
  };
  for (const auto& [calculation, calls] : cases) {
    FakeFunctions functions;
    Variables variables;
    Result(calculation, functions, variables);
    EXPECT_EQ(functions.calls, calls) << calculation;
  }
}

}  // namespace
}  // namespace calculation
