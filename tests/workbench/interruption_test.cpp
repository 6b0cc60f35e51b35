// Control-C at a terminal while calculations run.

#include "tests/workbench/terminal.h"

namespace workbench {
namespace {

constexpr const char* kEndless = "While ( i = 0 ; 1 ; i = Mod ( i + 1 ; 1000 ) ; \"\" )";

// Sorts for seconds within one call.
const std::string kLongCall =
    "SortValues ( Substitute ( Substitute ( 10 ^ 399 ; 0 ; 10 ^ 200 & 7 ) ; 0 ; \"d¶c¶b¶a¶\" ) )";

TEST(InterruptionTest, EndsWhatRunsWithStatus130) {
  const TemporaryFolder folder;
  const std::string loop = folder.Write(
      "loop", "\"go\"\nLoop\nSet Variable [ $i ; 1 ]\nExit Loop If [ $i > 1 ]\nEnd Loop\n");
  for (const std::vector<std::string>& words : std::vector<std::vector<std::string>>{
           {"eval", "\"go\"", kEndless, "\"never\""},
           {"eval", "\"go\"", "While ( i = 0 ; 1 ; i = " + kLongCall + " ; 0 )"},
           {"run", loop},
       }) {
    Terminal terminal(words, {});
    terminal.Expect("go\r\n");
    terminal.Type(kControlC);
    terminal.Expect("tarvo: interrupted\r\n");
    EXPECT_EQ(terminal.Status(), 130) << words[1];
  }
}

TEST(InterruptionTest, TheSecondOneEndsTheProgramAtOnce) {
  const TemporaryFolder folder;
  Terminal terminal({"--plugin", MakeBundle(folder, "Odd", ODD_PLUGIN), "eval", "OddWait"}, {});
  for (int i = 0; i < 2; ++i) {
    terminal.Expect("waiting");
    terminal.Type(kControlC);
  }
  EXPECT_EQ(terminal.Status(), 130);
}

TEST(InterruptionTest, ASessionGoesOnWithItsVariables) {
  const TemporaryFolder folder;
  Terminal terminal({"repl"}, {"HOME=" + (folder / "home"), "TERM=xterm"});
  const auto enter = [&](const std::string& entry) {
    terminal.Expect("tarvo> ");
    terminal.Type(entry + "\n");
  };
  enter("Set Variable [ $x ; 41 ]");
  for (int i = 0; i < 2; ++i) {
    enter(std::string("If [ 1 ]\nSet Variable [ $x ; $x + 1 ]\n\"go\"\n") + kEndless + "\nEnd If");
    terminal.Expect("\r\ngo\r\n");
    terminal.Type(kControlC);
    terminal.Expect("interrupted\r\n");
  }
  enter("$x & \"!\"");
  terminal.Expect("\r\n43!");
  enter("\x04");
  EXPECT_EQ(terminal.Status(), 0);
}

}  // namespace
}  // namespace workbench
