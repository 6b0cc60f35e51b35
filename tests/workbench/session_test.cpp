// Calculations, scripts and bundles, from the command line to the exit status.

#include <nlohmann/json.hpp>
#include <random>

#include "displays/protocol/display_json.h"
#include "tests/support/tarvo.h"

namespace workbench {
namespace {

using display::Json;

TEST(EvalTest, ResultsAreLinesOrExactJson) {
  EXPECT_EQ(Tarvo({"eval", "\"a¶b\"", "0.50", "TarvoDialog ( \"\" )"}).output,
            "a\nb\n.5\n$$002$$\n");
  EXPECT_EQ(Tarvo({"--json", "eval", "\"a¶\\\"b\\\"\" & Char ( 0 )", "-0.50", "\"7\""}).output,
            "{\"type\": \"text\", \"result\": \"a\\r\\\"b\\\"\\u0000\"}\n"
            "{\"type\": \"number\", \"result\": -0.5}\n"
            "{\"type\": \"text\", \"result\": \"7\"}\n");
  EXPECT_EQ(Tarvo({"eval", "\"ü 日本 😀\" & Char ( 55296 )"}, "", {"LC_ALL=C"}).output,
            "ü 日本 😀\xEF\xBF\xBD\n");
  EXPECT_EQ(Tarvo({"eval", "Get ( ScreenWidth ) & Get ( ScreenHeight )"}, "", {"DISPLAY="}).output,
            "19201080\n");
  // The order of the user's language, and how the country writes dates.
  const std::vector<std::string> words{"eval", "SortValues ( \"z¶ö¶o\" )", "Date ( 2 ; 1 ; 2024 )",
                                       "Day ( \"1.2.2024\" ) & MonthName ( \"1.2.2024\" )",
                                       "GetAsTimestamp ( \"1.2.2024 13:05\" )"};
  EXPECT_EQ(Tarvo(words, "", {"LC_ALL=de_DE.UTF-8"}).output,
            "o\nö\nz\n\n1.2.2024\n1Februar\n1.2.2024 13:05:00\n");
  EXPECT_TRUE(Tarvo(words, "", {"LC_ALL=", "LC_COLLATE=sv_SE.UTF-8", "LANG=de_DE"})
                  .output.starts_with("o\nz\nö\n\n1.2.2024\n"));
}

TEST(EvalTest, CalculationsShareVariablesAndOneLifeOfThePlugin) {
  EXPECT_EQ(Tarvo({"--answer", "enter 1 Ann; press 1", "eval",
                   "Let ( $name = \"1|Name|OK||||Name\" ; \"\" )", "TarvoDialog ( $name )",
                   "TarvoV1 ( 0 )"})
                .output,
            "\n1|Ann|||\nAnn\n");
}

TEST(EvalTest, AWrongCalculationIsStatus1AndTheLast) {
  const Ending ending = Tarvo({"eval", "1", "tarvodialg ( 2 )", "3"});
  EXPECT_EQ(ending.status, 1);
  EXPECT_EQ(ending.output, "1\n");
  EXPECT_EQ(ending.errors,
            "tarvo: calculation 2, line 1, column 1: there is no function \"tarvodialg\"; did you "
            "mean TarvoDialog?\n  tarvodialg ( 2 )\n  ^^^^^^^^^^\n");
}

// What is not UTF-8 is in the locale's code set, in which texts are printed too.
TEST(EncodingTest, TextsAreInTheLocalesCodeSet) {
  const TemporaryFolder folder;
  const std::string answers = folder.Write("a", "enter 1 \xFC\xE9\npress 1\n");
  const std::string name = "TarvoDialog ( \"1|Name|OK||||Name\" )";
  const struct {
    std::vector<std::string> words;
    const char* input;
    const char* output;
    const char* errors = "";
  } cases[] = {
      {{"eval", "\"\xFC\" & Char ( 8364 )", "Length ( \"\xC3\xBC\" )"}, "", "\xFC?\n1\n"},
      {{"--json", "eval", "\"\xFC\""}, "", "{\"type\": \"text\", \"result\": \"\xC3\xBC\"}\n"},
      {{"--answers", answers, "eval", name}, "", "1|\xFC\xE9|||\n"},
      {{"--answer", "enter 1 \xFC; press 1", "eval", name}, "", "1|\xFC|||\n"},
      {{"run", "-"}, "1\n\"\xFC\" & \xFC", "1\n", "line 2, column 7: unknown name \"\xFC\""},
      {{"repl"}, "\"\xFC\"\n", "\xFC\n"},
  };
  for (const auto& [words, input, output, errors] : cases) {
    const Ending ending = Tarvo(words, input, {"LC_ALL=de_DE.ISO-8859-1"});
    EXPECT_EQ(ending.output, output);
    EXPECT_TRUE(Holds(ending.errors, errors)) << ending.errors;
    const Ending refused = Tarvo(words, input, {"LC_ALL=C.UTF-8"});
    EXPECT_NE(refused.status, 0) << output;
    EXPECT_TRUE(Holds(refused.errors, "this is not UTF-8")) << refused.errors;
  }
  EXPECT_TRUE(Holds(Tarvo({"--answers", answers, "eval", name}, "", {"LC_ALL=C"}).errors,
                    "/a, byte 9: this is not UTF-8"));
  EXPECT_TRUE(Holds(Tarvo({"--answers", answers, "eval", name}, "", {"LC_ALL=ja_JP.EUC-JP"}).errors,
                    "/a, byte 9: this is neither UTF-8 nor in the locale's code set"));
}

struct ScriptCase {
  const char* script;
  const char* output;
};

TEST(RunTest, ScriptsRunStepByStep) {
  const ScriptCase cases[] = {
      {"1\r2\r\n3\n\n4", "1\n2\n3\n4\n"},
      {"\xEF\xBB\xBF# first\n  // second\n/* third\n fourth */ 5 // fifth\n", "5\n"},
      {"( 1 +\n\n 2 ) * 3", "9\n"},
      {"Left ( \"a\nb\" ; // (\n 9 )\n\"# no comment\"", "a\nb\n# no comment\n"},
      {"Set Variable [ $x ; 5 ]\nset variable[$$Y;Value: $x & \"]\"]\n$X & $$y", "55]\n"},
      {"If [ 1 ]\n1\nEnd If\nIf [ 0 ]\n2\nEnd If\nif ( 1 ; 3 ; 4 )", "1\n3\n"},
      {"If [ 0 ]\n1\nElse If [ 1 ]\n2\nElse If [ 1 ]\n3\nElse\n4\nEnd If", "2\n"},
      {"If [ \"\" ]\n1\nElse\nIf [ 1 ]\n2\nEnd If\n3\nEnd If", "2\n3\n"},
      {"Loop\nSet Variable [ $i ; $i + 1 ]\nExit Loop If [ $i > 2 ]\n$i\nEnd Loop\n\"end\"",
       "1\n2\nend\n"},
      {"Loop\nLoop\nExit Loop If [ 1 ]\nEnd Loop\nIf [ 1 ]\nExit Loop If [ 1 ]\nEnd If\n9\nEnd "
       "Loop",
       ""},
      {"", ""},
      {"# nothing", ""},
      // As FileMaker copies them.
      {"Set Error Capture [ On ]\nAllow User Abort [ Off ]\nLoop [ Flush: Always ]\n"
       "\tSet Variable [ $i[2] ; Value: $i[1 + 1] + 1 ]\n\tExit Loop If [ $i[2] ≥ 3 ]\nEnd Loop\n"
       "Exit Script [ Text Result: $i[2] & ¶ & \"end\" ]\n\"never\"",
       "3\nend\n"},
      {"If [ 1 ]\nExit Script [ Text Result:    ]\nEnd If\n1", ""},
      {"Loop\nExit Script\nExit Loop If [ 1 ]\nEnd Loop\n1", ""},
      {"Set Variable [ $x ; Value: 1 ]\nSet Variable [ $$y ; Value: 2 ]\n"
       "Perform Script [ “Second” ; Parameter: \"p\" ]\n$x & $$y & $z & Get ( ScriptResult ) & "
       "Get ( ScriptParameter ) & Get ( ScriptName )\n"
       "Perform Script [ Specified: By name ; \"th\" & \"ird\" ; Parameter:    ]\nGet ( "
       "ScriptResult )\n"
       "Script [ \"Second\" ]\nSet Variable [ $z ; Value: $x & $$y & Get ( ScriptParameter ) ]\n"
       "Set Variable [ $$y ; Value: 3 ]\nExit Script [ Text Result: $z & Get ( ScriptName ) ]\n"
       "Script [ \"Third\" ]\nGet ( ScriptParameter ) & \"3\"",
       "132pSecond\n3\n\n"},
      {"1 +\n// two\n2\nIf [ 1 & // one\n2 ]\n3 &\n\n4\nEnd If", "3\n34\n"},
      {"# all\nScript [ \"a\" ]\n1\nScript [ \"b\" ]\n2", "1\n"},
      {"Perform Script [ \"s\" ]\n1\nScript [ \"s\" ]\nHalt Script", ""},
  };
  for (const auto& [script, output] : cases) {
    EXPECT_EQ(Tarvo({"run", "-"}, script).output, output) << script;
  }
}

TEST(RunTest, AWrongScriptIsStatus1WhereItIsWrong) {
  const struct {
    const char* script;
    const char* output;
    const char* message;
  } cases[] = {
      {"1\n2 +\n", "1\n", "line 2, column 4: unexpected end; expected a value"},
      {"1\r\n\r\n2 3", "1\n", "line 3, column 3: "},
      {"1\n(2\n3\n", "1\n", "line 3, column 1: unexpected \"3\"; expected an operator or \")\""},
      {"1\n\"2\n3\n", "1\n", "line 2, column 1: the text has no end"},
      {"1\nEnd If", "1\n", "line 2, column 1: there is no If"},
      {"Else", "", "there is no If"},
      {"End Loop", "", "there is no Loop"},
      {"Exit Loop If [ 1 ]", "", "there is no Loop"},
      {"If [ 1 ]\n1", "", "line 1, column 1: this block has no end; expected Else If, Else or End"},
      {"If [ 1 ]\nElse\nElse\nEnd If", "", "line 3, column 1: unexpected step; expected End If"},
      {"If [ 1 ]\nEnd Loop", "", "line 2, column 1: unexpected step"},
      {"Loop\n1\nEnd Loop", "", "line 1, column 1: this loop never ends"},
      {"Loop\nLoop\nExit Loop If [ 1 ]\nEnd Loop\nEnd Loop", "", "line 1, column 1: this loop"},
      {"If [ 1 ] 2\nEnd If", "",
       "line 1, column 10: unexpected \"2\"; expected the end of the line"},
      {"If [ 1 ]\nEnd If 2", "", "line 2, column 8: unexpected \"2\""},
      {"Set Variable [ x ; 1 ]", "", "column 16: unexpected \"x\"; expected a variable"},
      {"Set Variable $x", "", "column 14: unexpected \"$x\"; expected \"[\""},
      {"Set Variable [ $x ]", "", "column 19: unexpected \"]\"; expected \";\""},
      {"Show Dialog [ \"x\" ]", "", "line 1, column 1: unknown script step"},
      {"1\n go to layout [ “Customers” (Customers) ]", "1\n",
       "line 2, column 2: go to layout: FileMaker has this, the workbench does not"},
      {"If [ 1 ]\nNew Record/Request\nEnd If", "",
       "line 2, column 1: New Record/Request: FileMaker"},
      {"Show Custom Dialog [ \"a\" ; \"b\" ; $c ]", "",
       "column 32: more than a title and a message"},
      {"Perform Script [ \"none\" ]", "", "there is no script \"none\" here"},
      {"Perform Script [ \"a\" ]\nScript [ \"a\" ]\nPerform Script [ \"A\" ]", "",
       "line 3, column 1: scripts perform each other more than 50 levels deep"},
      {"If [ 1 ]\n1\nunknown\nEnd If", "", "line 3, column 1: unknown name"},
      {"1\n\xFF", "", "line 2, column 1: this is not UTF-8"},
  };
  for (const auto& [script, output, message] : cases) {
    const Ending ending = Tarvo({"run", "-"}, script);
    EXPECT_EQ(ending.status, 1) << script;
    EXPECT_EQ(ending.output, output) << script;
    EXPECT_TRUE(Holds(ending.errors, std::string("tarvo: standard input, line "))) << ending.errors;
    EXPECT_TRUE(Holds(ending.errors, message)) << script << "\n" << ending.errors;
  }
}

TEST(RunTest, ShowCustomDialogIsAnAlert) {
  const Ending ending =
      Tarvo({"--answer", "press 2; press 1", "--describe", "/dev/stderr", "run", "-"},
            "Show Custom Dialog [ \"Hello\" ; 1/2 ]\nGet ( LastMessageChoice )\n"
            "Show Custom Dialog [ Title: \"Again\" ]\nGet ( LastMessageChoice )");
  EXPECT_EQ(ending.output, "2\n1\n") << ending.errors;
  EXPECT_TRUE(Holds(ending.errors, R"("message":"Hello","explanation":".5")")) << ending.errors;
}

TEST(RunTest, DeepBlocksAreRefusedAndManyAreNot) {
  std::string many;
  for (int i = 0; i < 150; ++i)
    many += "If [ 0 ]\nElse\nLoop\nExit Loop If [ 1 ]\nEnd Loop\nEnd If\n";
  EXPECT_EQ(Tarvo({"run", "-"}, many).status, 0);
  std::string script;
  for (int i = 0; i < 100'000; ++i) script += "If [ 1 ]\n";
  EXPECT_TRUE(Holds(Tarvo({"run", "-"}, script).errors, "nested more than 100 levels deep"));
}

TEST(BundleTest, FunctionsAreListedInOrderOfRegistration) {
  const Json functions = display::ParseJson(Tarvo({"--json", "functions"}).output);
  const std::vector<int> ids{0, 2, 3, 4, 5, 6, 7, 8, 9, 10, 13, 14, 15, 16, 17, 18, 19, 20, 21};
  ASSERT_EQ(functions.size(), ids.size());
  for (std::size_t i = 0; i < ids.size(); ++i) {
    EXPECT_EQ(functions[i]["id"], ids[i]);
    EXPECT_TRUE(std::string(functions[i]["prototype"])
                    .starts_with(std::string(functions[i]["name"]) + "("));
  }
  const std::string table = Tarvo({"functions"}).output;
  EXPECT_TRUE(table.starts_with("  0  TarvoDialogVersion      TarvoDialogVersion(")) << table;
  EXPECT_TRUE(Holds(table, "\n 21  TarvoSetFocus           TarvoSetFocus(")) << table;
}

TEST(BundleTest, InfoAsksThePlugin) {
  const Json info = display::ParseJson(Tarvo({"info", "--json"}).output);
  EXPECT_EQ(info["options"], "TRVO1nnYnn");
  EXPECT_EQ(info["answer"], 51);
  const std::string text = Tarvo({"info"}).output;
  for (const char* key : {"name", "description", "options"}) {
    EXPECT_FALSE(std::string(info[key]).empty()) << key;
    EXPECT_TRUE(Holds(text, std::string(info[key]) + "\n")) << key;
  }
}

TEST(BundleTest, TheLanguageChoosesTheTexts) {
  const TemporaryFolder folder;
  const std::string bundle =
      MakeBundle(folder, "Quenlix", std::string(PLUGIN_BUNDLE) + "/Contents/Linux/Quenlix");
  for (const std::string language : {"en", "tlh"}) {
    std::filesystem::create_directories(bundle + "/Contents/Resources/" + language + ".lproj");
    std::ofstream(bundle + "/Contents/Resources/" + language + ".lproj/Quenlix.strings")
        << "\"Quenlix 128\" = \"name in " << language << "\";";
  }
  const auto name = [&](std::vector<std::string> options, std::vector<std::string> environment) {
    options.insert(options.end(), {"--json", "--plugin", bundle, "info"});
    return std::string(display::ParseJson(Tarvo(options, "", environment).output)["name"]);
  };
  EXPECT_EQ(name({"--language", "tlh"}, {"LANGUAGE=en"}), "name in tlh");
  EXPECT_EQ(name({}, {"LANGUAGE=tlh"}), "name in tlh");
  EXPECT_EQ(name({"--language", "xx"}, {"LANGUAGE=tlh"}), "name in en");
}

TEST(BundleTest, ABundleThatCannotBeLoadedIsStatus3) {
  const TemporaryFolder folder;
  const std::string text = folder.Write("text", "no module");
  const std::string odd = MakeBundle(folder, "Odd", ODD_PLUGIN);
  const struct {
    std::vector<std::string> options;
    const char* message;
  } cases[] = {
      {{"--plugin", folder / "None.fmplugin"}, "None.fmplugin: there is no such bundle"},
      {{"--plugin", text}, "text: there is no such bundle"},
      {{"--plugin", MakeBundle(folder, "Hollow", "")}, "the bundle has no module"},
      {{"--plugin", MakeBundle(folder, "Text", text)}, "the module cannot be loaded"},
      {{"--plugin", MakeBundle(folder, "Empty", EMPTY_MODULE)},
       "the module has no entry point FMExternCallProc"},
      {{"--interface-version", "49"}, "refuses interface version 49, with the answer -1"},
      {{"--interface-version", "256"}, "refuses interface version 256"},
      {{"--interface-version", "-1"}, "refuses interface version -1,"},
      {{"--plugin", odd, "--interface-version", "77"}, "threw while it was initialised: no good"},
      {{"--plugin", odd, "--interface-version", "78"}, "version 78, with the answer 0"},
  };
  for (const auto& [options, message] : cases) {
    std::vector<std::string> words = options;
    words.insert(words.end(), {"eval", "1"});
    const Ending ending = Tarvo(words);
    EXPECT_EQ(ending.status, 3) << message;
    EXPECT_EQ(ending.output, "") << message;
    EXPECT_TRUE(IsOneLine(ending.errors)) << ending.errors;
    EXPECT_TRUE(Holds(ending.errors, message)) << ending.errors;
  }
}

// A crash is the plug-in's end, and not the workbench's; sanitizers would tell of it in their way.
Ending TarvoUnguarded(const std::vector<std::string>& words) {
  return Tarvo(words, "", {"ASAN_OPTIONS=handle_segv=0:handle_abort=0:handle_sigbus=0"});
}

TEST(BundleTest, ACrashIsToldInOneSentence) {
  const TemporaryFolder folder;
  const auto broken = [&](const std::string& fault) {
    return MakeBundle(folder, fault, BROKEN_PLUGIN);
  };
  const std::string mishandles = broken("mishandles-parameters");
  const auto plain = [](std::size_t units) {
    return "Plain ( \"" + std::string(units, 'x') + "\" )";
  };
  const struct {
    std::vector<std::string> words;
    const char* message;
  } cases[] = {
      {{"--plugin", broken("crashes-on-load"), "info"},
       "crashes-on-load.fmplugin: the module crashed while it was loaded: Segmentation fault\n"},
      {{"--plugin", broken("ends-on-load"), "functions"}, "loaded: it ended the program\n"},
      {{"--plugin", broken("crashes-on-init"), "eval", "1"},
       "the plug-in crashed while it was initialised: Aborted\n"},
      {{"--plugin", mishandles, "--answer", "press 2", "eval", plain(1025), "2"},
       "tarvo: Plain: the plug-in crashed: Segmentation fault\n"},
      {{"--plugin", mishandles, "--answer", "press 2", "eval", plain(100000)},
       "Plain: the plug-in crashed: Aborted\n"},
  };
  for (const auto& [words, message] : cases) {
    const Ending ending = TarvoUnguarded(words);
    EXPECT_EQ(ending.status, 3) << message;
    EXPECT_EQ(ending.output, "") << message;
    EXPECT_TRUE(IsOneLine(ending.errors)) << ending.errors;
    EXPECT_TRUE(Holds(ending.errors, message)) << ending.errors;
  }
}

TEST(BundleTest, ADamagedModuleIsNotLoaded) {
  const TemporaryFolder folder;
  const std::string whole = ReadAll(std::string(PLUGIN_BUNDLE) + "/Contents/Linux/Quenlix");
  std::vector<std::string> modules;
  constexpr std::size_t kPlaces = 12;
  for (std::size_t i = 0; i < kPlaces; ++i) {
    modules.push_back(whole.substr(0, whole.size() * i / kPlaces));
  }
  modules.push_back(whole.substr(0, whole.size() - 1));
  std::mt19937 random(1);
  std::string noise = whole;
  for (char& byte : noise) byte = static_cast<char>(random());
  modules.push_back(noise);
  modules.push_back(whole.substr(0, 64) + noise.substr(64));
  for (std::size_t i = 0; i < modules.size(); ++i) {
    const std::string name = "Damaged" + std::to_string(i);
    const std::string bundle = MakeBundle(folder, name, folder.Write("module", modules[i]));
    const Ending ending = TarvoUnguarded({"--plugin", bundle, "info"});
    EXPECT_EQ(ending.status, 3) << name;
    EXPECT_TRUE(Holds(ending.errors, "the module cannot be loaded: it is n")) << ending.errors;
    EXPECT_TRUE(IsOneLine(ending.errors)) << ending.errors;
  }
}

TEST(BundleTest, WhatAPluginDoesWrongIsStatus1) {
  const TemporaryFolder folder;
  const std::string odd = MakeBundle(folder, "Odd", ODD_PLUGIN);
  const struct {
    const char* calculation;
    const char* output;
    const char* message;
  } cases[] = {
      {"OddThrow ( 1 )", "0\n", "OddThrow: the plug-in threw an exception: out of order\n"},
      {"OddFail ( 1 )", "0\n", "OddFail: the plug-in answered error code 5\n"},
      {"oddsecond ( 1 ; 2 )", "0\n2\n", "the plug-in threw while it was shut down: will not go\n"},
      {"OddSecond ( 1 )", "0\n", "OddSecond expects 2 parameters, not 1: OddSecond"},
  };
  EXPECT_EQ(Tarvo({"--plugin", odd, "run", "-"}, "1\n").status, 1) << "it throws at its end";
  for (const auto& [calculation, output, message] : cases) {
    const Ending ending = Tarvo({"--plugin", odd, "eval", "0", calculation});
    EXPECT_EQ(ending.status, 1) << calculation;
    EXPECT_EQ(ending.output, output) << calculation;
    EXPECT_TRUE(Holds(ending.errors, message)) << ending.errors;
  }
}

TEST(CheckTest, TheStatusSaysWhetherAllPassed) {
  const TemporaryFolder folder;
  const Ending good = Tarvo({"check", "--only", "function-*"});
  EXPECT_EQ(good.status, 0) << good.output;
  EXPECT_TRUE(good.output.ends_with("\n6 passed, 0 failed\n")) << good.output;
  const std::string odd = MakeBundle(folder, "Odd", ODD_PLUGIN);
  for (const std::vector<std::string>& words : std::vector<std::vector<std::string>>{
           {"check", odd, "--exclude", "/"}, {"--plugin", odd, "check", "--exclude", "/"}}) {
    const Ending bad = Tarvo(words);
    EXPECT_EQ(bad.status, 1) << bad.output;
    EXPECT_TRUE(Holds(bad.output, "\nfailed     ")) << bad.output;
    EXPECT_FALSE(Holds(bad.output, " 0 failed")) << bad.output;
  }
  const Ending none = Tarvo({"check", folder / "None.fmplugin"});
  EXPECT_EQ(none.status, 3);
  EXPECT_EQ(none.output, "");
  const Json results = display::ParseJson(Tarvo({"check", "--json", "--only", "load"}).output);
  EXPECT_EQ(results[0]["check"], "load");
  EXPECT_EQ(results[0]["result"], "passed");
}

}  // namespace
}  // namespace workbench
