// Sessions: through a pipe as programs hold them, and at a terminal as users do.

#include <sys/resource.h>

#include "calculation/built_ins.h"
#include "tests/workbench/terminal.h"
#include "workbench/function_help.h"

namespace workbench {
namespace {

constexpr const char* kControlD = "\x04";
constexpr const char* kUp = "\x10";

TEST(PipedSessionTest, PrintsResultsAlone) {
  const struct {
    const char* input;
    const char* output;
  } cases[] = {
      {"1\n\n2\r\n3\r4", "1\n2\n3\n4\n"},
      {"((1 +\n\n2) *\n3)\n", "9\n"},
      {"Left ( \"a\nb\" ; /* (\n */ 9 )\n", "a\nb\n"},
      {"\"a\r\nb\"\r\n", "a\nb\n"},
      {"Set Variable [ $x ; 5 ]\nIf [ $x > 4 ]\n  $X\nElse\n  0\nEnd If\n", "5\n"},
      {"2 +\n\n3 // three\n1 and not\n0\n", "5\n1\n"},
      {"/* a\n\"/ */ \"b\\\"\n\\\\\"\n${a\nb}\n", "b\"\n\\\n\n"},
      {"Let ( $y = 3 ; \"\" )\n# nothing\n$y // three\n", "\n3\n"},
      {"", ""},
  };
  for (const auto& [input, output] : cases) {
    const Ending ending = Tarvo({"repl"}, input);
    EXPECT_EQ(ending.status, 0) << input << ending.errors;
    EXPECT_EQ(ending.errors, "") << input;
    EXPECT_EQ(ending.output, output) << input;
  }
  EXPECT_EQ(Tarvo({"--json", "repl"}, "\"a\"").output, "{\"type\": \"text\", \"result\": \"a\"}\n");
}

TEST(PipedSessionTest, TheFirstErrorEndsItAsItEndsAScript) {
  const struct {
    const char* input;
    const char* message;
    int status;
  } cases[] = {
      {"1\r\n\r\n2 +\r\n)\n", "standard input, line 4, column 1: unexpected \")\"", 1},
      {"1\n2 +\n", "standard input, line 2, column 4: unexpected end", 1},
      {"1\r\r(2\r", "standard input, line 3, column 3: unexpected end", 1},
      {"1\n\"2\n", "standard input, line 2, column 1: the text has no end", 1},
      {"1\nIf [ 1 ]\n2\n", "standard input, line 2, column 1: this block has no end", 1},
      {"1\n( 2 3\n)\n", "line 2, column 5: unexpected \"3\"", 1},
      {"1\nhelp me please\n", "line 2, column 1: unknown name \"help\"", 1},
      {"1\nTarvoDialog ( \"0|Hello\" )\n3\n", "no display: the dialog \"Hello\"", 5},
  };
  for (const auto& [input, message, status] : cases) {
    const Ending ending = Tarvo({"repl"}, input);
    EXPECT_EQ(ending.status, status) << input;
    EXPECT_EQ(ending.output, "1\n") << input;
    EXPECT_TRUE(Holds(ending.errors, message)) << ending.errors;
  }
}

// What a user pastes: twice as long takes twice as long, unless the lines are read again for every
// further one.
TEST(PipedSessionTest, LongEntriesTakeAsLongAsTheyAre) {
  const struct {
    const char* begin;
    const char* line;
    const char* end;
  } cases[] = {{"If [ 1 ]\n", "Set Variable [ $x ; $x + 1 ]\n", "End If\n"},
               {"( 0\n", "+ 1\n", ")\n"},
               {"", "1 +\n", "1\n"},
               {"\"", "a \\\" / b\n", "\"\n"},
               {"/*", "a / b\n", "*/ 1\n"}};
  // Of the processor's time, in which a busy machine counts little.
  const auto used = [] {
    rusage usage{};
    getrusage(RUSAGE_CHILDREN, &usage);
    return static_cast<double>(usage.ru_utime.tv_sec) +
           static_cast<double>(usage.ru_utime.tv_usec) / 1e6;
  };
  for (const auto& [begin, line, end] : cases) {
    const auto seconds = [&, begin = begin, line = line, end = end](int lines) {
      std::string entry = begin;
      for (int i = 0; i < lines; ++i) entry += line;
      const double start = used();
      EXPECT_EQ(Tarvo({"repl"}, entry + end).status, 0);
      return used() - start;
    };
    EXPECT_LT(seconds(4000), 6 * seconds(1000) + 0.1) << line;
  }
}

TEST(PipedSessionTest, HelpExplainsEveryFunction) {
  EXPECT_EQ(Tarvo({"repl"}, "help left\n").output,
            "Left ( text ; count )\n  the first characters of a text\n");
  const std::string dialog = Tarvo({"repl", "--language", "de"}, "help tarvodialog").output;
  EXPECT_TRUE(dialog.starts_with("TarvoDialog(")) << dialog;
  EXPECT_TRUE(Holds(dialog, "\n  a message with up to four buttons")) << dialog;
  EXPECT_EQ(Tarvo({"repl"}, "help Substitut").output,
            "There is no function Substitut; did you mean Substitute?\n");
  std::istringstream list(Tarvo({"repl"}, "help").output);
  std::string questions;
  std::size_t count = 0;
  for (std::string line; std::getline(list, line) && line != "Functions:";) {
  }
  for (std::string line; std::getline(list, line); ++count) questions += "help " + line + "\n";
  EXPECT_EQ(count, DescribedPluginFunctions().size() + calculation::BuiltInNames().size());
  std::istringstream answers(Tarvo({"repl"}, questions).output);
  std::size_t descriptions = 0;
  for (std::string line; std::getline(answers, line);) descriptions += line.starts_with("  ");
  EXPECT_EQ(descriptions, count);
}

class SessionTest : public testing::Test {
 protected:
  std::vector<std::string> Environment() const {
    return {"XDG_STATE_HOME=" + (folder_ / "state"), "HOME=" + (folder_ / "home"), "TERM=xterm"};
  }

  std::string History() const { return ReadAll(folder_ / "state/tarvo/history"); }

  static void Leave(Terminal& terminal) {
    terminal.Expect("tarvo> ");
    terminal.Type(kControlD);
    EXPECT_EQ(terminal.Status(), 0);
  }

  const TemporaryFolder folder_;
};

TEST_F(SessionTest, ResultsAndErrorsFollowOneAnother) {
  Terminal terminal({"repl", "--answer", "press 2"}, Environment());
  const std::string errors[][2] = {
      {"2 3", "line 1, column 3: unexpected \"3\""},
      {"TarvoDialog ( \"0|One|Yes|No\" )", "\r\n2||||"},
      {"TarvoDialog ( \"0|Two\" )", "dialog \"Two\": --answer, line 1: there is no answer left"},
      {"TarvoLC ( 0 ) & \"!\"", "!\r\n"},
      {"Let ( $grün = \"ü\" ; $grün & 日 )", "unknown name \"日\""},
      {"Upper ( \"ü😀\" )", "\r\nÜ😀\r\n"},
  };
  for (const auto& [entry, shown] : errors) {
    terminal.Expect("tarvo> ");
    terminal.Type(entry + "\n");
    terminal.Expect(shown);
  }
  Leave(terminal);
}

TEST_F(SessionTest, ALostDisplayIsReportedAndTheSessionGoesOn) {
  Terminal terminal({"--display", "desktop", "repl"}, Environment());
  for (int i = 0; i < 2; ++i) {
    terminal.Expect("tarvo> ");
    terminal.Type("TarvoDialog ( \"0|Lost\" )\n");
    terminal.Expect("\r\nno display: the dialog \"Lost\"");
  }
  Leave(terminal);
}

TEST_F(SessionTest, CommandsAreObeyed) {
  std::filesystem::create_directories(folder_ / "config/tarvo");
  folder_.Write("config/tarvo/init", "Set Variable [ $x ; 40 ]\n\"ready\"\n");
  const std::string script = folder_.Write("script", "Set Variable [ $x ; $x + 1 ]\n$x & \"!\"\n");
  std::vector<std::string> environment = Environment();
  environment.push_back("XDG_CONFIG_HOME=" + (folder_ / "config"));
  Terminal terminal({"repl"}, environment);
  const std::string entries[][2] = {{".read " + script, "\r\n41!"},
                                    {".read /none", "cannot read /none"},
                                    {"HELP left", "the first characters"},
                                    {".timer\n$x & \"?\"", "\r\n41?\r\n0.0"}};
  terminal.Expect("ready\r\n");
  for (const auto& [entry, shown] : entries) {
    terminal.Expect("tarvo> ");
    terminal.Type(entry + "\n");
    terminal.Expect(shown);
  }
  terminal.Expect("tarvo> ");
  terminal.Type("Quit\n");
  EXPECT_EQ(terminal.Status(), 0);
  EXPECT_EQ(Tarvo({"repl"}, "1\nexit\n2\n").output, "1\n");
}

TEST_F(SessionTest, WhatIsPastedIsOneEntry) {
  Terminal terminal({"repl"}, Environment());
  terminal.Expect("tarvo> ");
  terminal.Type("Set Variable [ $x ; 1 ]\n$x & \"a\"\n$x & \"b\"\n");
  terminal.Expect("\r\n1a\r\n1b\r\n");
  Leave(terminal);
  EXPECT_EQ(History(), "Set Variable [ $x ; 1 ]\\n$x & \"a\"\\n$x & \"b\"\n");
}

TEST_F(SessionTest, LinesGoOnWhileSomethingIsOpen) {
  Terminal terminal({"repl"}, Environment());
  terminal.Expect("tarvo> ");
  terminal.Type("Left ( \"ab\n");
  terminal.Expect("...> ");
  terminal.Type("c\" ;\n");
  terminal.Expect("...> ");
  terminal.Type("4 )\n");
  terminal.Expect("\r\nab\r\nc\r\n");
  terminal.Expect("tarvo> ");
  terminal.Type("( 1 +\n");
  terminal.Expect("...> ");
  terminal.Type("no");
  terminal.Type(kControlC);
  terminal.Expect("tarvo> ");
  terminal.Type("41 + 1");
  terminal.Type("\n");
  terminal.Expect("\r\n42\r\n");
  Leave(terminal);
  EXPECT_EQ(History(), "Left ( \"ab\\nc\" ;\\n4 )\n41 + 1\n");
}

TEST_F(SessionTest, TheHistoryIsKeptBetweenSessions) {
  {
    Terminal terminal({"repl"}, Environment());
    for (const std::string entry : {"( 1 +\n1 )\n", "\"a\\\\b\"\n", "\"a\\\\b\"\n", "wrong\n"}) {
      terminal.Expect("tarvo> ");
      terminal.Type(entry);
    }
    terminal.Expect("unknown name");
    EXPECT_EQ(History(), "( 1 +\\n1 )\n\"a\\\\\\\\b\"\nwrong\n") << "before the session has ended";
    Leave(terminal);
  }
  Terminal terminal({"repl"}, Environment());
  terminal.Expect("tarvo> ");
  terminal.Type(std::string(kUp) + kUp + "\n");
  terminal.Expect("\r\na\\b\r\n");
  terminal.Expect("tarvo> ");
  terminal.Type(std::string(kUp) + kUp + kUp + kUp + "\n");
  terminal.Expect("\r\n2\r\n");
  Leave(terminal);
  const auto rights = std::filesystem::status(folder_ / "state/tarvo/history").permissions();
  EXPECT_EQ(rights, std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
}

TEST_F(SessionTest, TheHistoryHasAnEndAndAHome) {
  std::filesystem::create_directories(folder_ / "home/.local/state/tarvo");
  std::string entries;
  for (int i = 1; i <= 1500; ++i) entries += std::to_string(i) + "\n";
  const std::string file = folder_.Write("home/.local/state/tarvo/history", entries);
  Terminal terminal({"repl"}, {"XDG_STATE_HOME=", "HOME=" + (folder_ / "home"), "TERM=xterm"});
  terminal.Expect("tarvo> ");
  terminal.Type(std::string(kUp) + " + 1\n");
  terminal.Expect("\r\n1501\r\n");
  Leave(terminal);
  const std::string kept = ReadAll(file);
  EXPECT_TRUE(kept.starts_with("501\n502\n")) << kept.substr(0, 20);
  EXPECT_TRUE(kept.ends_with("\n1500\n1500 + 1\n"));
}

TEST_F(SessionTest, NamesAreCompleted) {
  Terminal terminal({"repl"}, Environment());
  terminal.Expect("tarvo> ");
  terminal.Type("Let ( [ $First = 1 ; $färben = 2 ] ; tarvodialogv\t ( 0 ) )\n");
  terminal.Expect("\r\n220\r\n");
  terminal.Expect("tarvo> ");
  terminal.Type("$fi\t & $fä\t + 1\n");
  terminal.Expect("\r\n13\r\n");
  terminal.Expect("tarvo> ");
  terminal.Type("right\t\t");
  terminal.Expect("Right        RightValues");
  terminal.Expect("tarvo> ");
  terminal.Type("V\t ( \"a¶b\" ; 1 )\n");
  terminal.Expect("\r\nb\r\n");
  terminal.Expect("tarvo> ");
  terminal.Type("help sub\t\n");
  terminal.Expect("Substitute ( text");
  terminal.Expect("tarvo> ");
  terminal.Type("\t7 & xyz\t\b\b\b 8\n");
  terminal.Expect("\r\n78\r\n");
  Leave(terminal);
}

TEST_F(SessionTest, NothingIsLoadedForOtherCommands) {
  const std::string command = std::string("LD_DEBUG=files ") + TARVO_PROGRAM + " run - 2>&1";
  const Ending ending = testing_tools::Run(
      {"/bin/sh",
       {"-c", command},
       "Perform Script [ \"a\" ]\nScript [ \"a\" ]\nGet ( ScriptName ) & \" runs\""});
  EXPECT_TRUE(Holds(ending.output, "libCoreFoundation")) << ending.output;
  EXPECT_TRUE(Holds(ending.output, "a runs")) << ending.output;
  for (const char* library : {"libedit", "libtinfo", "Qt6", "tarvo-line-editor"}) {
    EXPECT_FALSE(Holds(ending.output, library)) << library;
  }
}

}  // namespace
}  // namespace workbench
