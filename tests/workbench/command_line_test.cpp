// What the command line is taken to mean, and what is said if it is wrong.

#include "tests/support/tarvo.h"

namespace workbench {
namespace {

TEST(CommandLineTest, OptionsStandBeforeOrBehindTheCommand) {
  const std::string version = "{\"type\": \"number\", \"result\": 220}\n";
  const std::string call = "TarvoDialogVersion ( \"\" )";
  EXPECT_EQ(Tarvo({"--json", "eval", call}).output, version);
  EXPECT_EQ(Tarvo({"eval", "--json", call}).output, version);
  EXPECT_EQ(Tarvo({"eval", call, "--json"}).output, version);
  EXPECT_EQ(
      Tarvo({"--interface-version", "50", "eval", "--json", call, "--display=scripted"}).output,
      version);
}

TEST(CommandLineTest, TheNextWordIsAnOptionsArgument) {
  const TemporaryFolder folder;
  const std::string dialog = "TarvoDialog ( \"1|Name|OK||||Name\" )";
  EXPECT_EQ(Tarvo({"--answer", "press 1", "eval", dialog}).output, "1||||\n");
  EXPECT_TRUE(Holds(Tarvo({"eval", "--answer", "--json", "1"}).errors, "\"--json\" is no answer"));
  EXPECT_TRUE(Holds(Tarvo({"eval", "--answer=-x", "1"}).errors, "\"-x\" is no answer"));
  EXPECT_EQ(Tarvo({"eval", "--answer", "", "1"}).output, "1\n");
  EXPECT_EQ(Tarvo({"eval", "--answer=", "1"}).output, "1\n");
  EXPECT_TRUE(Holds(Tarvo({"--plugin", "--json", "info"}).errors, "--json: "));
}

TEST(CommandLineTest, CalculationsMayLookLikeOtherThings) {
  const struct {
    std::vector<std::string> words;
    const char* output;
  } cases[] = {
      {{"eval", "-1"}, "-1\n"},
      {{"eval", "-(2)", "--3", "-$x"}, "-2\n3\n0\n"},
      {{"eval", "-Length ( \"ab\" )"}, "-2\n"},
      {{"eval", "--", "-1", "2"}, "-1\n2\n"},
      {{"eval", "1", "\"info\"", "\"a,b\""}, "1\ninfo\na,b\n"},
  };
  for (const auto& [words, output] : cases) EXPECT_EQ(Tarvo(words).output, output);
  EXPECT_TRUE(Holds(Tarvo({"eval", "info"}).errors, "unknown name \"info\""));
  EXPECT_TRUE(Holds(Tarvo({"eval", "[1]"}).errors, "column 1: unexpected \"[\""));
}

TEST(CommandLineTest, WrongUsageIsStatus2) {
  const struct {
    std::vector<std::string> words;
    const char* message;
  } cases[] = {
      {{"evall", "1"}, "unknown command evall; did you mean eval?"},
      {{"sing"}, "unknown command sing\n"},
      {{"--jsn", "info"}, "unknown option --jsn; did you mean --json?"},
      {{"eval", "--anser", "press 1", "1"}, "unknown option --anser; did you mean --answer?"},
      {{"eval", "-x"}, "unknown option -x\n"},
      {{"--strict"}, "expected a command"},
      {{"eval"}, "eval expects CALCULATION..."},
      {{"run"}, "run expects FILE"},
      {{"run", "-", "other"}, "run does not expect other"},
      {{"info", "more"}, "info does not expect more"},
      {{"help", "sing"}, "unknown command sing"},
      {{"eval", "1", "--answer"}, "--answer expects TEXT"},
      {{"eval", "1", "--display", "paper"}, "--display: paper"},
      {{"eval", "1", "--interface-version", "70000"}, "--interface-version"},
      {{"eval", "1", "--interface-version", "new"}, "--interface-version"},
      {{"eval", "1", "--answer", "press 1; sing"}, "--answer, line 2: \"sing\" is no answer"},
      {{"eval", "1", "--answers", "/no/such"}, "cannot read /no/such: No such file"},
      {{"eval", "1", "--describe", "/no/such"}, "cannot write /no/such: No such file"},
      {{"eval", "1", "--record", "/no/such"}, "cannot write /no/such"},
      {{"eval", "1", "--screenshot", "/dev/null/x"}, "cannot make /dev/null/x"},
      {{"run", "/no/such"}, "cannot read /no/such: No such file"},
      {{"eval", "--junit", "x", "1"}, "eval does not use --junit, an option of test and check\n"},
      {{"check", "--answer", "press 1"},
       "check does not use --answer, an option of eval, run, repl, explain, preview, test, "
       "functions and "
       "info\n"},
      {{"info", "--arg", "a", "b"},
       "info does not use --arg, an option of eval, run, repl, explain and preview\n"},
      {{"info", "--fields"}, "info does not use --fields"},
      {{"preview", "a", "--record", "b"}, "preview does not use --record without --screenshot\n"},
      {{"preview", "a", "--screenshot", "b", "--display", "desktop"},
       "preview does not use --display, an option of eval, run, repl, test, functions and info\n"},
      {{"preview", "a", "--answers", "-"}, "preview reads --answers again and again, which "},
      {{"--plugin", "a", "check", "b"}, "check is given two bundles: --plugin a and b\n"},
      {{"eval", "1", "--arg", "a"}, "--arg expects NAME and VALUE\n"},
      {{"eval", "1", "--arg", "$", "b"}, "a variable is to have a name\n"},
      {{"eval", "1", "--args-json", "/dev/null"}, "/dev/null: "},
      {{"eval", "1", "--timeout", "0"}, "--timeout"},
      {{"check", "--explain", "string-12"},
       "there is no check string-12; did you mean string-128?"},
      {{"check", "--only", "no such check"}, "no check matches \"no such check\""},
      {{"repl", "1"}, "repl does not expect 1"},
  };
  for (const auto& [words, message] : cases) {
    const Ending ending = Tarvo(words);
    EXPECT_EQ(ending.status, 2) << message;
    EXPECT_EQ(ending.output, "") << message;
    EXPECT_TRUE(ending.errors.starts_with("tarvo: ")) << ending.errors;
    EXPECT_TRUE(Holds(ending.errors, message)) << ending.errors;
  }
}

TEST(CommandLineTest, HelpComesWithExamples) {
  for (const std::vector<std::string>& words : std::vector<std::vector<std::string>>{
           {}, {"help"}, {"--help"}, {"-h"}, {"--json", "--help"}}) {
    const Ending ending = Tarvo(words);
    EXPECT_EQ(ending.status, 0);
    for (const char* part :
         {"Usage: tarvo [options] COMMAND", "eval CALCULATION...", "--describe", "Examples:"}) {
      EXPECT_TRUE(Holds(ending.output, part)) << ending.output;
    }
  }
  for (const char* command : {"eval", "run", "repl", "functions", "info", "check"}) {
    const Ending ending = Tarvo({"help", command});
    EXPECT_TRUE(ending.output.starts_with(std::string("Usage: tarvo [options] ") + command));
    EXPECT_TRUE(Holds(ending.output, "Examples:\n  tarvo "));
    EXPECT_EQ(Tarvo({command, "--help"}).output, ending.output);
  }
  EXPECT_EQ(Tarvo({"--version"}).output, "tarvo 2.2.0\n");
}

TEST(CommandLineTest, HelpExplainsWhateverHasAName) {
  for (const auto& [name, text] : std::vector<std::pair<std::string, std::string>>{
           {"left", "Left ( text ; count )\n"},
           {"tarvodialog", "\n  a message with up to four buttons"},
           {"ScreenWidth", "Get ( ScreenWidth )\n"},
           {"enter", "enter N TEXT\n  the content of field N"},
           {"string-128", "string-128\n  String 128, the plug-in's name"},
           {"Any/items", "Here it is passed a text with items on several"},
           {"GetField", "GetField: FileMaker has this"}}) {
    const Ending ending = Tarvo({"help", name});
    EXPECT_EQ(ending.status, 0) << name;
    EXPECT_TRUE(Holds(ending.output, text)) << ending.output;
  }
  EXPECT_FALSE(Holds(Tarvo({"help", "check"}).output, "--answer"));
  EXPECT_FALSE(Holds(Tarvo({"help", "eval"}).output, "--junit"));
}

TEST(CommandLineTest, ArgumentsAreTextsWhateverTheyAre) {
  const std::string value = "\" & $y\\ [1] -x";
  EXPECT_EQ(Tarvo({"eval", "$X & $$y & ${a b}", "--arg", "x", value, "--arg", "$$y", "--json",
                   "--arg", "a b", "c"})
                .output,
            value + "--jsonc\n");
}

TEST(CommandLineTest, ResultsForShellScripts) {
  const std::string name = "TarvoDialog ( \"1|Name|OK|No|||Name\" )";
  EXPECT_EQ(Tarvo({"--fields", "--answer", "enter 1 Ann; press 2", "eval", name}).output,
            "2\nAnn\n\n\n\n");
  EXPECT_EQ(Tarvo({"--fields", "--json", "eval", "\"a|b\""}).output,
            "{\"type\": \"fields\", \"result\": [\"a\", \"b\"]}\n");
  for (const auto& [answer, status] :
       std::vector<std::pair<std::string, int>>{{"press 1", 11}, {"press 2", 12}, {"escape", 10}}) {
    EXPECT_EQ(Tarvo({"--button-status", "--answer", answer, "eval", "TarvoAllowEscape ( 1 )", name})
                  .status,
              status);
  }
  EXPECT_EQ(Tarvo({"--button-status", "eval", "\"5|x\""}).status, 0);
  EXPECT_EQ(Tarvo({"--json", "eval", "1 +"}).errors.substr(0, 44),
            "{\"error\": \"line 1, column 4: unexpected end;");
  EXPECT_TRUE(Tarvo({"--json", "eval", "1 +"}).errors.ends_with("\", \"status\": 1}\n"));
  EXPECT_TRUE(Tarvo({"evil", "--json"}).errors.ends_with("\", \"status\": 2}\n"));
}

// What is written is more than a pipe holds, so the reader ends before all of it is.
TEST(CommandLineTest, ABrokenPipeEndsQuietly) {
  const std::string long_text =
      "While ( [ a = 12345678 ] ; Length ( a ) < 999999 ; [ a = a & a ] ; a )";
  const std::string script =
      TARVO_PROGRAM + (" eval 1 '" + long_text + "' 2 2>&1 >&3; echo status $?");
  const Ending ending =
      testing_tools::Run({"/bin/bash", {"-c", "{ { " + script + "; } | cat; } 3> >(head -n 1)"}});
  EXPECT_EQ(ending.output, "1\nstatus 1\n");
}

TEST(CommandLineTest, StandardOutputThatCannotBeWrittenIsStatus1) {
  const Ending full = testing_tools::Run({TARVO_PROGRAM, {"eval", "1", "2"}, "", {}, "/dev/full"});
  EXPECT_EQ(full.status, 1);
  EXPECT_EQ(full.errors, "tarvo: cannot write to standard output: No space left on device\n");
  const TemporaryFolder folder;
  const std::string log = folder / "log";
  const std::string script = std::string(TARVO_PROGRAM) + " --describe " + log + " eval 1 >&-";
  const Ending closed = testing_tools::Run({"/bin/sh", {"-c", script}});
  EXPECT_EQ(closed.status, 1);
  EXPECT_EQ(closed.errors, "tarvo: cannot write to standard output: Bad file descriptor\n");
  EXPECT_EQ(ReadAll(log), "");
}

TEST(CommandLineTest, StandardInputThatCannotBeReadIsStatus2) {
  for (const std::string& words :
       std::vector<std::string>{"run -", "repl", "eval -", "--answers - eval 1"}) {
    for (const std::string& from : std::vector<std::string>{"<&-", "</"}) {
      const Ending ending =
          testing_tools::Run({"/bin/sh", {"-c", TARVO_PROGRAM + (" " + words + " " + from)}});
      EXPECT_EQ(ending.status, 2) << words;
      EXPECT_TRUE(ending.errors.starts_with("tarvo: cannot read standard input: "))
          << ending.errors;
    }
  }
}

}  // namespace
}  // namespace workbench
