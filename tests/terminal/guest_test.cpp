// The terminal before, between and behind dialogs, whatever happens to them.

#include <fstream>

#include "tests/desktop/processes.h"
#include "tests/terminal/dialogs.h"

namespace terminal_test {
namespace {

using workbench::Holds;
using workbench::ReadAll;
using workbench::TemporaryFolder;

// The processes of that name below the process.
std::vector<pid_t> Descendants(pid_t process, const std::string& name) {
  std::vector<pid_t> found;
  std::ifstream children("/proc/" + std::to_string(process) + "/task/" + std::to_string(process) +
                         "/children");
  for (pid_t child; children >> child;) {
    if (desktop_test::Line("/proc/" + std::to_string(child) + "/status", "Name:\t") == name) {
      found.push_back(child);
    }
    for (const pid_t further : Descendants(child, name)) found.push_back(further);
  }
  return found;
}

// Nobody may have asked for its status yet.
bool HasEnded(pid_t process) {
  const std::string state =
      desktop_test::Line("/proc/" + std::to_string(process) + "/status", "State:\t");
  return state.empty() || state.starts_with("Z");
}

constexpr const char* kHalfOfAClick = "\033[<0;10;";

Words Shell(const std::string& command = "") {
  Words words{"/bin/bash", "--norc", "--noprofile"};
  if (command.empty()) {
    words.insert(words.end(), {"--noediting", "-i"});
  } else {
    words.insert(words.end(), {"-c", command});
  }
  return words;
}

// Typed at the prompt of a shell with job control, in front of a screen with something on it.
class AtAPrompt : public testing::Test {
 protected:
  AtAPrompt() : user_(Shell(), {"PS1=$ ", "TARVO=" + std::string(TARVO_PROGRAM)}) {
    Run("echo be'fore'");
    user_.Expect("before\n$");
  }
  ~AtAPrompt() override { user_.Type("\nexit\n"); }

  void Run(const std::string& command) { user_.Type(command + "\n"); }

  void OpenDialog() {
    Run("$TARVO eval '" + kNames + "'");
    user_.Expect("<]");
    EXPECT_TRUE(user_.IsOnOtherScreen());
    user_.Type("Ann");
    user_.Expect("[Ann");
  }

  void ExpectAsBefore() {
    EXPECT_TRUE(user_.WaitUntil([&] { return user_.IsAsBefore() && user_.Shows("before"); }))
        << user_.Screen();
    Run("echo st'atus' $?");  // a line that is echoed and taken as usual
    user_.Expect("status ");
  }

  // The shell tells of it at its next prompt.
  void ExpectStopped() {
    EXPECT_TRUE(user_.WaitUntil([&] {
      Run("");
      return user_.Screen().rfind("Stopped") > user_.Screen().rfind("$ bg") ||
             (!user_.Shows("$ bg") && user_.Shows("Stopped"));
    }));
  }

  TerminalUser user_;
};

TEST_F(AtAPrompt, TheScreenComesBackAfterAnAnswer) {
  OpenDialog();
  user_.Type(kReturn);
  user_.Expect("1|Ann|||");
  ExpectAsBefore();
  user_.Expect("status 0");
}

TEST_F(AtAPrompt, ControlCInterruptsTheHostOnAScreenThatIsAsItWas) {
  OpenDialog();
  user_.Type("\003");
  ExpectAsBefore();
  user_.Expect("status 130");
}

TEST_F(AtAPrompt, ControlZStopsAllAndTheDialogComesBackAsItWas) {
  OpenDialog();
  user_.Type("\032");
  user_.Expect("Stopped");
  ExpectAsBefore();
  Run("bg");  // it stops again at once, since the terminal is not its own
  ExpectStopped();
  EXPECT_FALSE(user_.IsOnOtherScreen());
  Run("fg");
  user_.Expect("[Ann");
  user_.Type(std::string("!") + kReturn);
  user_.Expect("1|Ann!|||");
  ExpectAsBefore();
}

TEST_F(AtAPrompt, ADialogInTheBackgroundWaitsUntilItIsInFront) {
  Run("$TARVO eval '" + kNames + "' &");
  ExpectStopped();
  EXPECT_TRUE(user_.IsAsBefore());
  Run("fg");
  user_.Expect("<]");
  user_.Type(kReturn);
  user_.Expect("1||||");
}

TEST_F(AtAPrompt, KilledDisplayLeavesTheTerminalAsItWas) {
  for (const int signal_number : {SIGKILL, SIGSEGV, SIGTERM}) {
    Run("clear; echo be'fore'");
    OpenDialog();
    const auto displays = Descendants(user_.Program(), "tarvo-terminal");
    ASSERT_EQ(displays.size(), 1U);
    kill(displays[0], signal_number);
    ExpectAsBefore();
    user_.Expect("status 5");
  }
}

TEST_F(AtAPrompt, KilledHostLeavesTheTerminalAsItWas) {
  for (const char* typed : {"", "\033", " ", "\033[200~x", kHalfOfAClick}) {
    Run("clear; echo be'fore'");
    OpenDialog();
    user_.Type(typed);
    EXPECT_TRUE(user_.WaitUntil([&] { return user_.IsAllTaken(); })) << typed;
    const pid_t display = Descendants(user_.Program(), "tarvo-terminal").at(0);
    kill(Descendants(user_.Program(), "tarvo").at(0), SIGKILL);
    EXPECT_TRUE(user_.WaitUntil([&] { return HasEnded(display); })) << typed;
    ExpectAsBefore();
    user_.Expect("status 137");
  }
}

TEST_F(AtAPrompt, ResultsGoWhereTheHostsOutputGoes) {
  Run("answer=$($TARVO eval '" + kNames + "'); echo \"<$answer>\"");
  user_.Expect("<]");
  user_.Type(std::string("\032Ann") + kReturn);  // there is nobody to continue it
  user_.Expect("<1|Ann|||>");
  ExpectAsBefore();
}

TEST_F(AtAPrompt, ASessionsNextDialogTakesTheFirstClick) {
  Run("$TARVO repl");
  for (const char* name : {"Ann", "Lee"}) {
    user_.Expect("\ntarvo>\n");
    Run("TarvoDialog ( \"1|Name|OK||||First\" )");
    user_.Expect("<]");
    user_.Type(name);
    user_.Click("OK");
    user_.Expect(std::string("1|") + name);
  }
  user_.Expect("\ntarvo>\n");
  user_.Type("\004");
  user_.Expect("\n$\n");  // a line editor that ends throws away what was typed ahead
  ExpectAsBefore();
}

TEST(Guest, HangUpEndsTheDialogWithoutAnAnswer) {
  const TemporaryFolder folder;
  const std::string errors = folder / "errors";
  TerminalUser user(Shell("trap '' HUP; " + std::string(TARVO_PROGRAM) + " eval '" + kNames +
                          "' 2> " + errors + "; echo status $? >> " + errors));
  user.Expect("<]");
  user.HangUp();
  EXPECT_TRUE(user.WaitUntil([&] { return Holds(ReadAll(errors), "status 5"); }));
  EXPECT_TRUE(Holds(ReadAll(errors), "the terminal has hung up")) << ReadAll(errors);
}

// The terminal library may be reading just then.
TEST(Guest, HangUpWhileTheMouseReportsEndsTheDisplay) {
  std::string wheel;
  for (int i = 0; i < 300; ++i) wheel += "\033[<64;10;10M";
  for (int round = 0; round < 4; ++round) {
    TerminalUser user(Tarvo({kNames}));
    user.Expect("<]");
    const pid_t display = Descendants(user.Program(), "tarvo-terminal").at(0);
    kill(display, SIGSTOP);
    user.Type(wheel);
    kill(display, SIGCONT);
    std::this_thread::sleep_for(std::chrono::microseconds(600) * round);
    user.HangUp();
    EXPECT_TRUE(user.WaitUntil([&] { return HasEnded(display); }));
  }
}

TEST(Guest, ADialogFitsTheScreenWhateverItBecomes) {
  TerminalUser user(
      Tarvo({R"(TarvoDialog ( "4|The message|OK|Cancel|||First|Last|Street|Town" ))"}));
  user.Expect("┘");  // which is drawn last
  const std::string whole = user.Screen();
  for (const Size size : {Size{12, 40}, Size{5, 24}, Size{3, 8}, Size{1, 1}}) {
    user.Resize(size);
    user.Type("x\x7f");
    if (size.rows >= 12) {
      user.Expect("[> OK <]");  // narrower than before
      user.Expect("Town");
    } else if (size.rows >= 5) {
      EXPECT_TRUE(user.WaitUntil([&] { return !user.Shows("Town") && user.Shows("↓"); }));
      user.Type("\t\t\t");
      user.Expect("Town");  // what has the focus is seen
      user.Type("\t\t\t");
    }
  }
  user.Resize({24, 80});
  user.ExpectScreen(whole);
  user.Type(kReturn);
  user.Expect("1||||");
}

TEST(Guest, WhichDisplayShowsADialogFollowsWhatThereIs) {
  for (const Words& environment : {Words{}, Words{"DISPLAY=:9999"}}) {
    TerminalUser user(Tarvo({kNames}), environment);
    user.Expect("<]");
    user.Type(kReturn);
    user.Expect("1||||");
  }
  struct Case {
    Words options;
    Words environment;
    const char* reason;
  };
  for (const Case& each :
       {Case{{"--display", "desktop"}, {}, "has no window: neither DISPLAY nor"},
        Case{
            {"--display", "terminal"}, {"TERM=dumb"}, "has no window: a terminal of the kind dumb"},
        Case{{"--display", "terminal"}, {"TERM="}, "has no window: TERM does not say"},
        Case{{}, {"TERM=no-such"}, "WAYLAND_DISPLAY is set, and the kind of terminal that TERM"}}) {
    TerminalUser user(Tarvo({kNames}, each.options), each.environment, {24, 200});
    user.Expect(each.reason);
    EXPECT_FALSE(user.IsOnOtherScreen());
    EXPECT_EQ(user.Status(), 5);
  }
}

}  // namespace
}  // namespace terminal_test
