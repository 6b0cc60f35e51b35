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
      {"1e3 & \" \" & 2.5E-3 & \" \" & 12e+2", "text:1000 .0025 1200"},
      {"1e-500 + 1e399 * 0", "number:0"},
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
      {"1\u3000+ 1", "number:2"},
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
      {"Max ( 2 ; 10 ; 3 ) & Min ( 2 ; 10 ; -3 ) & Max ( -5 ; -2 ; -9 )", "text:10-3-2"},
      {"Floor ( -.5 ) & Ceiling ( -.5 ) & Ceiling ( .5 ) & Truncate ( -1259 ; -2 )",
       "text:-101-1200"},
      {"Div ( 7 ; -2 ) & Mod ( .7 ; -.2 ) & Div ( 1e399 ; 1e398 )", "text:-4-.110"},
      {"Sum ( 1 ; \"x2\" ; \"\" ) & Average ( -1 ; -2 ) & Average ( \"\" )", "text:3-1.5"},
      {"1 / 3e20", "number:0"},
      {"(1 / 7) ^ 40 * 0 + 2 / 3e-16", "number:6666666666666666.6666666666666667"},
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
      {"\"1e3\" + 0 & \" \" & GetAsNumber ( \"about 2.5E-2 or so\" )", "text:1000 .025"},
      {"\"12e\" + \"3 e4\"", "number:46"},
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
      {"\"ä\" < \"b\" and \"Z\" < \"Ä\" = 0", "number:1"},
      {"\"\xC3\xA9\" = \"e\u0301\" and \"é\" ≠ \"e\"", "number:1"},
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
      {"Upper ( \"ŉ ﬁ\" ) & Proper ( \"ann o'NEIL-lee éa\" )", "text:ʼN FIAnn O'neil-Lee Éa"},
      // A long text, which is mapped part by part.
      {"While ( [ a = \"ΑΣ ΤΟ \" ; b = \"ας το \" ; c = \"Ας Το \" ; i = 0 ] ; i < 15 ;"
       "[ a = a & a ; b = b & b ; c = c & c ; i = i + 1 ] ;"
       "Exact ( Lower ( a ) ; b ) & Exact ( Proper ( a ) ; c ) & Exact ( Upper ( c ) ; a ) )",
       "text:111"},
      {"Length ( \"e\u0301\" & \"👨‍👩‍👧\" & Char ( 13 ) & Char ( 10 ) )", "number:4"},
      {"Left ( \"e\u0301x\" ; 1 ) & Right ( \"x😀\" ; 1 ) & Middle ( \"😀ab\" ; 2 ; 1 )",
       "text:e\u0301😀a"},
      {"Position ( \"😀ΣΊΣΥΦΟΣ\" ; \"σ\" ; 1 ; -1 ) & Position ( \"😀ΣΊΣΥΦΟΣ\" ; \"ς\" ; 3 ; 1 )",
       "text:04"},
      {"Position ( \"xe\u0301\" ; \"É\" ; 1 ; 1 ) & Position ( \"xe\u0301\" ; \"e\" ; 1 ; 1 )",
       "text:20"},
      {"PatternCount ( \"ЖжЖ\" ; \"ж\" ) & Substitute ( \"e\u0301e\" ; \"e\" ; \"a\" )",
       "text:3éa"},
      {"Replace ( \"😀bc\" ; 2 ; 1 ; \"X\" ) & Filter ( \"a😀b\" ; \"😀\" )", "text:😀Xc😀"},
      {"LeftWords ( \"  one, two  three\" ; 2 ) & \"|\" & RightWords ( \"one two.\" ; 1 )",
       "text:one, two|two"},
      {"MiddleWords ( \"a b c d\" ; 2 ; 2 ) & WordCount ( \"... \" ) & LeftWords ( \"a\" ; -1 )",
       "text:b c0"},
      {"Char ( 77600097 ) & Code ( \"e\u0301\" )",
       "text:a\u0308"
       "76900101"},
      {"TextStyleAdd ( \"a\" ; bold + Italic ) & TextColor ( \"b\" ; RGB ( 1 ; 2 ; 3 ) )",
       "text:ab"},
      {"Trim ( \"  a b \" ) & Trim ( \"  \" ) & IsEmpty ( \"\" )", "text:a b1"},
      {R"(Quote ( "a\"b\\¶" ))", R"(text:"a\"b\\¶")"},
      {"Quote ( 12345678.9 )", R"(text:"12345678.9")"},
  });
}

TEST(CalculationTest, ListFunctions) {
  Check({
      {"GetValue ( \"a¶b¶c\" ; 2 ) & GetValue ( \"a\" ; 2 ) & GetValue ( \"a\" ; 0 )", "text:b"},
      {"GetValue ( \"a¶¶c\" ; 2 ) & GetValue ( \"a¶¶c\" ; 3 )", "text:c"},
      {"ValueCount ( \"a¶b\" ) & ValueCount ( \"a¶b¶\" ) & ValueCount ( \"\" ) & ValueCount ( ¶ )",
       "text:2201"},
      {"LeftValues ( \"a¶b¶c\" ; 2 )", "text:a\rb\r"},
      {"MiddleValues ( \"a¶b¶c\" ; -3 ; 2 ) & MiddleValues ( \"a¶b\" ; 2 ; 9 )", "text:a\rb\rb\r"},
      {"SortValues ( \"b¶ä¶A¶10¶9\" )", "text:10\r9\rA\rä\rb\r"},
      {"SortValues ( \"10¶9¶-1.5\" ; -2 )", "text:10\r9\r-1.5\r"},
      {"SortValues ( \"12/1/2023¶2/29/2024¶1/5/2023\" ; 3 )",
       "text:1/5/2023\r12/1/2023\r2/29/2024\r"},
      {"UniqueValues ( \"b¶a¶B¶¶a¶\" ) & UniqueValues ( \"1¶1.0¶2\" ; 2 )", "text:b\ra\r\r1\r2\r"},
      {"FilterValues ( \"a¶b¶a¶c\" ; \"A¶c¶x\" )", "text:a\ra\rc\r"},
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

TEST(CalculationTest, DatesAndTimesKeepTheirKind) {
  Check({
      {"Date ( 12 ; 31 ; 2023 ) + 1", "moment:1/1/2024"},
      {"Date ( 14 ; 0 ; 2023 )", "moment:1/31/2024"},
      {"Date ( 0 ; 1 ; 2024 ) & \" \" & Date ( -11 ; 1 ; 2024 )", "text:12/1/2023 1/1/2023"},
      {"1 & Date ( 2 ; 28 ; 1900 ) + 1", "text:13/1/1900"},
      {"Date ( 3 ; 1 ; 2024 ) - Date ( 2 ; 1 ; 2024 )", "number:29"},
      {"GetAsNumber ( Date ( 1 ; 1 ; 1 ) ) & \" \" & Date ( 1 ; 1 ; 2024 ) * 1", "text:1 738886"},
      {"GetAsNumber ( GetAsTimestamp ( \"1/1/1970 0:00\" ) )", "number:62135596800"},
      {"Time ( 23 ; 59 ; 59 ) + 2 & \" \" & Time ( 0 ; 0 ; 0 ) - 90", "text:24:00:01 -0:01:30"},
      {"Time ( 4.5 ; 10 ; 30.25 )", "moment:4:40:30.25"},
      {"Timestamp ( Date ( 2 ; 28 ; 2024 ) ; Time ( 23 ; 59 ; 59 ) ) + 1",
       "moment:2/29/2024 12:00:00 AM"},
      {"Timestamp ( \"2/28/2024\" ; \"12:30 PM\" ) - Timestamp ( \"2/28/2024\" ; \"0:30\" )",
       "moment:12:00:00"},
      {"Let ( t = GetAsTimestamp ( \"2/29/2024 14:30:05\" ) ; GetAsDate ( t ) & \" \" & GetAsTime "
       "( t ) "
       "& Day ( t ) & Hour ( t ) & Minute ( t ) & Seconds ( t ) )",
       "text:2/29/2024 14:30:052914305"},
      {"MonthName ( \"2/29/2024\" ) & DayName ( Date ( 1 ; 1 ; 1 ) ) & DayOfWeek ( 738886 )",
       "text:FebruaryMonday2"},
      {"Month ( \"2/29/2024\" ) & Year ( \"2/29/2024\" ) & DayOfYear ( \"12/31/2024\" )",
       "text:22024366"},
      {"WeekOfYear ( \"12/31/2023\" ) & \" \" & WeekOfYear ( \"1/7/2024\" )", "text:53 2"},
      {"WeekOfYearFiscal ( \"12/30/2024\" ; 2 ) & \" \" & WeekOfYearFiscal ( \"1/1/2023\" ; 2 )",
       "text:1 52"},
      {"Date ( 1 ; 2 ; 2024 ) = \"1/2/2024\" and Date ( 1 ; 2 ; 2024 ) < \"11/1/2024\"",
       "number:1"},
      {"Max ( Date ( 1 ; 2 ; 2024 ) ; Date ( 12 ; 1 ; 2023 ) )", "moment:1/2/2024"},
      {"Get ( CurrentTimestamp ) ≥ Timestamp ( Get ( CurrentDate ) ; 0 ) and Get ( CurrentDate ) > "
       "739000",
       "number:1"},
      {"Length ( Get ( UUID ) ) & PatternCount ( Get ( uuid ) ; \"-\" )", "text:364"},
      {"Get ( SystemLanguage )", "text:English"},
  });
}

TEST(CalculationTest, LoopsEvaluationAndRepetitions) {
  Check({
      {"While ( [ i = 0 ; sum = 0 ] ; i < 10 ; [ i = i + 1 ; sum = sum + i ] ; sum )", "number:55"},
      {"While ( i = 5 ; 0 ; i = i + 1 ; i )", "number:5"},
      {"While ( [ i = 0 ] ; i < 2 ; [ i = i + 1 ; last = i ] ; last )", "number:2"},
      {"Let ( i = 7 ; While ( [ i = 0 ] ; i < 3 ; [ i = i + 1 ] ; i ) & i )", "text:37"},
      {"While ( [ a = 1 ; $n = 0 ] ; $n < 3 ; [ $n = $n + 1 ; a = While ( [ b = 0 ; c = a ] ; b < "
       "2 ; "
       "[ b = b + 1 ; c = c * 2 ] ; c ) ] ; a & $n )",
       "text:643"},
      {"Let ( [ a = \"x\" ; b = a & \"1\" ; c = a & \"2\" ; d = b & \"3\" ] ; a & b & c & d )",
       "text:xx1x2x13"},
      {"Let ( [ $x = 1 ; y = 2 ] ; Evaluate ( \"$x + 1\" ) & Evaluate ( \"y\" ) & Evaluate ( \"1 "
       "+\" ) "
       "& Evaluate ( \"1 / 0\" ) & y )",
       "text:2???2"},
      {"Evaluate ( \"Evaluate ( \\\"1 + 1\\\" ) & \\\"a\\\"\" )", "text:2a"},
      {"Let ( $x = \"Evaluate ( $x )\" ; Evaluate ( $x ) )", "text:?"},
      {"Let ( [ $x[2] = 5 ; $x = 1 ; $x[1 + 2] = 7 ] ; $x & $x[1] & $x[2] & $X[3] & $x[4] )",
       "text:1157"},
      {"Let ( [ ~x = 1 ; @y = 2 ; ~x# = 3 ] ; ~x & @y & ~X# )", "text:123"},
      {"Let ( [ ${a name} = 3 ; $$b = 4 ] ; ${a name} & ${A NAME} & $${b} & $$b )", "text:3344"},
      {"SetRecursion ( While ( i = 0 ; i < 3 ; i = i + 1 ; i ) ; 3 )", "number:3"},
  });
}

TEST(CalculationTest, JsonIsReadAndWritten) {
  Check({
      {R"(JSONSetElement ( "{}" ; "a.b[1]" ; "x" ; JSONString ))",
       R"(text:{"a":{"b":[null,"x"]}})"},
      {R"(JSONSetElement ( "" ; "[0]" ; .5 ; JSONNumber ))", "text:[0.5]"},
      {R"(JSONSetElement ( "[1]" ; [ "[+]" ; 2 ; JSONNumber ] ; [ "[:]" ; 3 ; JSONNumber ] ))",
       "text:[1,3]"},
      {R"(JSONSetElement ( "{\"b\":1}" ; [ "a" ; "true" ; JSONBoolean ] ; [ "c" ; "" ; JSONNull ] ; )"
       R"([ "d" ; "" ; JSONObject ] ; [ "e" ; "[1, 2]" ; JSONArray ] ))",
       R"(text:{"a":true,"b":1,"c":null,"d":{},"e":[1,2]})"},
      {R"(JSONSetElement ( "{}" ; [ "a" ; "x" ; "" ] ; [ "b" ; "{\"c\": 1}" ; JSONRaw ] ; [ "d" ; 7 ; 0 ] ))",
       R"(text:{"a":"x","b":{"c":1},"d":7})"},
      {R"(JSONSetElement ( "{\"a\":1}" ; "a.b" ; "é¶" ; JSONString ))",
       "text:{\"a\":{\"b\":\"é\\r\"}}"},
      {R"(JSONGetElement ( "{\"a.b\":[true,null,-1.50,\"x\"]}" ; "['a.b'][2]" ))", "number:-1.5"},
      {R"(JSONGetElement ( "[true,null,{\"k\":[]}]" ; 0 ) & JSONGetElement ( "[1,2]" ; "[:]" ))",
       "text:12"},
      {R"(JSONGetElement ( "[1e3,12345678901234567890]" ; 0 ) + JSONGetElement ( "[1]" ; 5 ))",
       "number:1000"},
      {R"(JSONGetElement ( "{\"a\": {\"c\":1,\"b\":[ 2 ]}}" ; "a" ))", R"(text:{"b":[2],"c":1})"},
      {R"(JSONListKeys ( "{\"b\":{\"y\":1,\"x\":2}}" ; "b" ) & JSONListKeys ( "[5,6]" ; "" ))",
       "text:x\ry0\r1"},
      {R"(JSONListValues ( "{\"b\":\"\",\"a\":2}" ; "" ) & "|" & JSONListValues ( "3" ; "" ))",
       "text:2\r|"},
      {R"(JSONDeleteElement ( "{\"a\":[1,2,3]}" ; "a[1]" ) & JSONDeleteElement ( "{\"a\":1}" ; "b" ))",
       R"(text:{"a":[1,3]}{"a":1})"},
      {R"(Left ( JSONGetElement ( "{\"a\"" ; "a" ) ; 2 ) & Left ( JSONGetElement ( "[1]" ; "[x]" ) ; 2 ))",
       "text:? ? "},
  });
}

// A function that shows a dialog must be called once, in order, and only if its result matters.
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
      {"While ( i = 0 ; i < 2 ; i = Echo ( i + 1 ) ; i )", {"Echo<1>", "Echo<2>"}},
      {"Evaluate ( \"Echo ( 1 )\" )", {"Echo<1>"}},
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
