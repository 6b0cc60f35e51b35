// A plug-in lives as long as its host: nothing may grow, and nothing without end.

#include <unistd.h>

#include <cstdlib>
#include <fstream>

#include "tests/memory/failing_allocator.h"
#include "tests/support/plugin_host.h"
#include "tests/support/tarvo.h"

namespace {

class LongLife : public PluginHost {
 protected:
  // Runs `round` until everything has its size, then `rounds` times, and holds it to what it had.
  template <class Round>
  static void ExpectFlat(int rounds, Round round) {
    for (int i = 0; i < 20; ++i) round();
    const long blocks = failing_allocator::LiveBlocks();
    const long carbon_objects = carbon::LiveObjects();
    const CFIndex strings = CFGetLiveObjectCount();
    for (int i = 0; i < rounds; ++i) round();
    EXPECT_EQ(carbon::LiveObjects(), carbon_objects);
    EXPECT_EQ(CFGetLiveObjectCount(), strings);
    EXPECT_EQ(failing_allocator::LiveBlocks(), blocks);
  }

  void Dialog(const char* function, const char* parameter, const char* answers) {
    EXPECT_NE(Call(function, parameter, answers), "$$003$$");
  }
};

TEST_F(LongLife, ScriptedDialogsOfEveryKindLeaveNothing) {
  Call("TarvoPopUps", "red\rgreen|yes\rno");
  Call("TarvoFillListBox", "one\rtwo\rthree");
  ExpectFlat(5000, [this] {
    Dialog("TarvoDialog", "2|m|OK|No|||First|Last", "enter 1 Ann; enter 2 Lee; press 2");
    Dialog("TarvoDialog", "5|m|OK", "choose 1 2; press 1");
    Call("TarvoSetCustomControls", "3|4|2|1");
    Dialog("TarvoCustomDialog", "4|m|OK", "click 1; click 2; enter 4 pw; press 1");
    Dialog("TarvoDoListBox", "m|OK||||||||1", "row 1; row+ 3; press 1");
    Dialog("TarvoAlert", "2|m|e|Yes|No", "escape");
  });
}

TEST_F(LongLife, AThousandLivesLeaveNothing) {
  ExpectFlat(1000, [this] {
    Call("TarvoSetCaption", "caption");
    Call("TarvoPopUps", "aa\rbb|cc");
    Call("TarvoFillListBox", "one\rtwo");
    Call("TarvoSetCustomControls", "2|2");
    Dialog("TarvoCustomDialog", "2|m", "choose 1 2; press 1");
    Send(kFMXT_Shutdown);
    Send(kFMXT_Init);
  });
}

TEST_F(LongLife, AMillionLinesAndAHundredThousandItems) {
  const CFIndex strings = CFGetLiveObjectCount();
  std::string lines = "first";
  for (int i = 1; i < 1'000'000; ++i) lines += "\rx";
  EXPECT_EQ(Call("TarvoFillListBox", lines), "1000000");
  EXPECT_EQ(Call("TarvoDoListBox", "m", "row 1; press 1"), "1|first");
  EXPECT_LE(CFGetLiveObjectCount(), strings + 3) << "no object a line";
  std::string items = "first";
  for (int i = 1; i < 100'000; ++i) items += "\rx" + std::to_string(i);
  EXPECT_EQ(Call("TarvoPopUps", items), "1");
  EXPECT_EQ(Call("TarvoDialog", "5|m", "press 1"), "1|first|||");
  EXPECT_EQ(Opened().at("controls").back().at("items").size(), 65'535U) << "as a command can name";
  Answer("choose 1 65535; choose 1 65536");
  EXPECT_EQ(Call("TarvoDialog", "5|m"), "1|first|||");
  EXPECT_NE(dialogs_->failure()->reason.find("there is no item 65536"), std::string::npos);
  Call("TarvoPreEnterText", "x99999");
  EXPECT_EQ(Call("TarvoDialog", "5|m", "press 1"), "1|x99999|||");
  const std::string megabyte(1 << 20, 'm');
  EXPECT_EQ(Call("TarvoDialog", "2|m", "enter 1 " + megabyte + "; enter 2 é; press 1"),
            "1|" + megabyte + "|é||");
}

// The kilobytes that the process `id` holds in memory.
long ResidentKilobytes(const std::string& id) {
  std::ifstream status("/proc/" + id + "/status");
  for (std::string word; status >> word;) {
    if (word == "VmRSS:") return status >> word ? std::stol(word) : 0;
  }
  return 0;
}

// The only child of this process.
std::string Child() {
  const std::string self = std::to_string(getpid());
  std::ifstream children("/proc/self/task/" + self + "/children");
  std::string child;
  children >> child;
  return child;
}

TEST_F(LongLife, AThousandDesktopDialogsLeaveTheDisplayAsItWas) {
  setenv("QT_QPA_PLATFORM", "offscreen", 1);
  Call("TarvoFillListBox", "one\rtwo\rthree");
  std::vector<display::Description> dialogs{display::Alert{2, "m", "e", "Yes", "No", {}}};
  for (const char* function : {"TarvoDialog", "TarvoDoListBox"}) {
    Call(function, "4|message|OK|No|||a|b|c|d", "press 1");
    dialogs.push_back(display::DescriptionFromJson(Opened()));
  }
  display::Display& desktop = carbon::DefaultDisplay();
  const auto show = [&](int rounds) {
    for (int i = 0; i < rounds; ++i) {
      ASSERT_TRUE(desktop.Open(dialogs[static_cast<std::size_t>(i) % dialogs.size()]));
      desktop.Close();
    }
    // It opens this one when it has dealt with all that it was sent.
    ASSERT_TRUE(desktop.Open(dialogs[0]));
    desktop.Close();
  };
  show(300);
  const std::string display = Child();
  // A heap settles sooner or later; what is left behind grows with every dialog.
  constexpr int kMostRounds = 5;
  long growth = 0;
  for (int round = 0; round < kMostRounds; ++round) {
    const long kilobytes = ResidentKilobytes(display);
    ASSERT_GT(kilobytes, 0);
    show(1000);
    growth = ResidentKilobytes(display) - kilobytes;
    if (growth < 256) break;
  }
  EXPECT_LT(growth, 256) << "a quarter of a kilobyte for each dialog";
  EXPECT_EQ(Child(), display) << "it is still the same process";
}

// Limits of calculations and scripts, here since sanitizers would take half a minute to reach them.

TEST(Limits, ALoopEndsAfterAMillionRounds) {
  const auto ending = workbench::Tarvo({"run", "-"}, "Loop\nExit Loop If [ 0 ]\nEnd Loop");
  EXPECT_EQ(ending.status, 1);
  EXPECT_TRUE(workbench::Holds(ending.errors, "gone round 1000000 times")) << ending.errors;
}

TEST(Limits, ATextHasAtMost16777216Characters) {
  std::string longest = "Let ( [ a = \"0123456789abcdef\"";
  for (int i = 0; i < 20; ++i) longest += " ; a = a & a";
  longest += " ] ; ";
  EXPECT_EQ(workbench::Tarvo({"eval", longest + "Length ( a ) )"}).output, "16777216\n");
  const std::string literal = "\"" + std::string((1 << 24) + 1, 'x') + "\"";
  for (const std::string& calculation :
       {longest + "a & a )", longest + "Substitute ( Left ( a ; 99999 ) ; \"0\" ; a ) )",
        longest + "List ( a ; a ) )", longest + "Quote ( a ) )",
        longest + "Replace ( a ; 1 ; 0 ; a ) )", literal}) {
    const auto ending = workbench::Tarvo({"run", "-"}, calculation);
    EXPECT_EQ(ending.status, 1);
    EXPECT_TRUE(workbench::Holds(ending.errors, "longer than 16777216 characters"))
        << calculation.substr(calculation.size() - 50) << ending.errors.substr(0, 200);
  }
}

}  // namespace
