// The whole house: a calculation, the plug-in, real windows, and a user with keys and a pointer.

#include <gtest/gtest.h>

#include <future>

#include "tests/desktop/x_session.h"
#include "tests/support/run_program.h"
#include "tests/support/temporary_folder.h"
#include "tests/workbench/terminal.h"

namespace {

using desktop_test::XSession;
using testing_tools::Ending;

class EndToEnd : public testing::Test {
 protected:
  // Evaluates while the test is the user; what the user did is recorded.
  void Evaluate(std::vector<std::string> calculations) {
    std::vector<std::string> arguments{"--record", record_, "eval"};
    arguments.insert(arguments.end(), calculations.begin(), calculations.end());
    const std::string screen = std::string("DISPLAY=") + std::getenv("DISPLAY");
    ending_ = std::async(std::launch::async, [arguments, screen] {
      return testing_tools::Run({TARVO_PROGRAM, arguments, "", {screen}, ""});
    });
  }

  void Await(const std::string& title) {
    ASSERT_NE(user_.ActiveWindow(title), 0U) << title << " does not open";
  }

  // What was printed; the same calculations answered by the recording print it again.
  std::string Printed(const std::vector<std::string>& calculations) {
    const Ending ending = ending_.get();
    EXPECT_EQ(ending.status, 0) << ending.errors;
    std::vector<std::string> arguments{"--answers", record_, "eval"};
    arguments.insert(arguments.end(), calculations.begin(), calculations.end());
    EXPECT_EQ(testing_tools::Run({TARVO_PROGRAM, arguments}).output, ending.output);
    return ending.output;
  }

  XSession user_{XSession::Manager::kNone};
  std::future<Ending> ending_;
  const testing_tools::TemporaryFolder folder_;
  const std::string record_ = folder_ / "record";
};

TEST_F(EndToEnd, TypingTwoNamesAndPressingCancelAnswersThem) {
  const std::vector<std::string> calculations{
      R"(TarvoSetCaption ( "Names" ))",
      R"(TarvoDialog ( "2|Enter the name|OK|Cancel|||First|Last|||" ))", R"(TarvoV1 ( "" ))"};
  Evaluate(calculations);
  Await("Names");
  user_.Type("Ann");
  user_.Key("Tab");
  user_.Type("Lee");
  user_.Click(427 + 263, 436 + 134);  // Cancel, in a dialog of 425 by 152 centred on 1280 by 1024
  EXPECT_EQ(Printed(calculations), "Names\n2|Ann|Lee||\nAnn\n");
}

TEST_F(EndToEnd, EveryKindOfDialogInOneLifeByKeysAlone) {
  const std::vector<std::string> calculations{
      R"(TarvoPopUps ( "red¶green¶blue" ))",
      R"(TarvoSetCustomControls ( "2|3|4|1" ))",
      R"(TarvoSetCaption ( "Custom" ))",
      R"(TarvoCustomDialog ( "4|Choose|OK||||Colour|Box|Radio|Secret" ))",
      R"(TarvoFillListBox ( "one¶two¶three" ))",
      R"(TarvoSetCaption ( "List" ))",
      R"(TarvoDoListBox ( "Choose|OK|No|||||1||1" ))",
      R"(TarvoAlert ( "2|Sure?|It is for good.|Yes|No" ))",
      R"(TarvoAllowEscape ( 1 ))",
      R"(TarvoSetCaption ( "Last" ))",
      R"(TarvoDialog ( "1|Name" ))"};
  Evaluate(calculations);
  Await("Custom");
  user_.Key("Down Down Tab space Tab space Tab");
  user_.Type("pw");
  user_.Key("Return");
  Await("List");
  user_.Key("Return Tab Down Down shift+Down Return");  // the first one finds its button disabled
  Await(" ");
  user_.Key("Escape");
  Await("Last");
  user_.Type("lost");
  user_.Key("Escape");
  const std::string printed = ending_.get().output;
  EXPECT_EQ(printed, "1\n2|3|4|1\nCustom\n1|blue|1|1|pw\n3\nList\n1|two|three\n2\n1\nLast\nE\n");
}

TEST_F(EndToEnd, ClicksOnRowsCountAndThoseOnTheScrollBarDoNot) {
  const std::vector<std::string> calculations{R"(TarvoFillListBox ( "one¶two¶three" ))",
                                              R"(TarvoSetCaption ( "List" ))",
                                              R"(TarvoDoListBox ( "Choose|OK|No||||1" ))"};
  Evaluate(calculations);
  Await("List");
  constexpr int kLeft = 427;  // a window of 425 by 325
  constexpr int kTop = 349;
  user_.Click(kLeft + 410, kTop + 108);
  user_.Click(kLeft + 402, kTop + 108);
  user_.Click(kLeft + 5, kTop + 125);
  user_.Click(kLeft + 402, kTop + 125);
  EXPECT_EQ(Printed(calculations), "3\nList\n1|two\n");
}

TEST_F(EndToEnd, ADialogThatNobodyAnswersCloses) {
  const Ending ending =
      testing_tools::Run({TARVO_PROGRAM,
                          {"--timeout", "0.3", "eval", R"(TarvoDialog ( "0|Anybody?" ))", "2"},
                          "",
                          {std::string("DISPLAY=") + std::getenv("DISPLAY")}});
  EXPECT_EQ(ending.status, 4);
  EXPECT_EQ(ending.output, "");
  EXPECT_EQ(ending.errors, "tarvo: dialog \"Anybody?\": nobody answers\n");
}

// At the terminal, which sends the signal to the display too.
TEST_F(EndToEnd, ControlCClosesTheDialogAndSaysSo) {
  const std::string dialog = R"(TarvoDialog ( "0|Still there?" ))";
  const std::vector<std::string> environment{std::string("DISPLAY=") + std::getenv("DISPLAY"),
                                             "HOME=" + (folder_ / "home"), "TERM=xterm"};
  const auto interrupt = [&](workbench::Terminal& terminal, const std::string& caption) {
    Await(caption);  // a caption of its own, since the window before may take a while to go
    terminal.Type(workbench::kControlC);
    terminal.Expect("interrupted while the dialog \"" + caption + "\" was open\r\n");
  };
  workbench::Terminal once({"eval", R"(TarvoSetCaption ( "Once" ))", dialog}, environment);
  interrupt(once, "Once");
  EXPECT_EQ(once.Status(), 130);
  workbench::Terminal session({"repl"}, environment);
  for (const std::string caption : {"First", "Second"}) {
    session.Expect("tarvo> ");
    session.Type("Set Variable [ $x ; TarvoSetCaption ( \"" + caption + "\" ) ]\n");
    session.Expect("tarvo> ");
    session.Type(dialog + "\n");
    interrupt(session, caption);
  }
  session.Expect("tarvo> ");
  session.Type("$x & \"!\"\n");
  session.Expect("\r\nSecond!");
  session.Expect("tarvo> ");
  session.Type("\x04");
  EXPECT_EQ(session.Status(), 0);
}

}  // namespace
