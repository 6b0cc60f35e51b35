// A display in a process of its own, from the host's side. Each test writes the display, a script
// that speaks for itself over its socket, descriptor 3.

#include "displays/protocol/display_process.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/time.h>
#include <sys/wait.h>

#include <cerrno>
#include <cstddef>
#include <filesystem>
#include <iterator>

#include "tests/support/temporary_folder.h"

namespace {

using display::Action;
using display::DisplayProcess;
using display::protocol::ActionLine;
using display::protocol::NotReadyLine;
using display::protocol::ReadyLine;
using std::chrono::milliseconds;
using std::chrono::seconds;
using Clock = std::chrono::steady_clock;

const display::Description kDialog = display::Window{};

// The shell's words that say a line, or what there is of it, to the host.
std::string Say(const std::string& line) { return "printf %s '" + line + "' >&3\n"; }

// The shell's words that wait for the host to say a line.
std::string Hear() { return "read -r line <&3\n"; }

Action MakeAction(Action::Kind kind) {
  Action action;
  action.kind = kind;
  return action;
}

class DisplayProcessTest : public testing::Test {
 protected:
  ~DisplayProcessTest() override { EXPECT_EQ(Descriptors(), descriptors_); }

  // How many this process has open.
  static std::ptrdiff_t Descriptors() {
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
  }

  // The path of a display that does what the shell's words say.
  std::string MakeDisplay(const std::string& words) const {
    const std::string file = folder_.Write("display", "#!/bin/sh\n" + words);
    std::filesystem::permissions(file, std::filesystem::perms::owner_all);
    return file;
  }

  // Expects that the display does not open a dialog, and that nothing is left of it.
  static std::string WhyNotOpened(DisplayProcess& display) {
    EXPECT_FALSE(display.Open(kDialog));
    EXPECT_TRUE(waitpid(-1, nullptr, WNOHANG) < 0 && errno == ECHILD) << "it is not reaped";
    return display.WhyLost();
  }

  const testing_tools::TemporaryFolder folder_;
  const std::ptrdiff_t descriptors_ = Descriptors();
};

TEST_F(DisplayProcessTest, OneThatSaysNoWholeLineIsGivenUpInTime) {
  for (const std::string& words : {std::string(), Say("{\"ready\":")}) {
    const std::string program = MakeDisplay(words + "exec sleep 60\n");
    DisplayProcess display(program, milliseconds(300));
    const auto start = Clock::now();
    EXPECT_EQ(WhyNotOpened(display), program + " does not get ready") << words;
    EXPECT_GE(Clock::now() - start, milliseconds(300)) << words;
    EXPECT_LT(Clock::now() - start, seconds(20)) << words;
  }
}

TEST_F(DisplayProcessTest, OneThatCannotBeReadIsEndedAndStartedAnew) {
  const std::string mark = folder_ / "started-once";
  for (const std::string& first : {Say("nonsense\n"), Say("{}\n"), Say("{\"ready\":") + "exit\n"}) {
    std::filesystem::remove(mark);
    const std::string program =
        MakeDisplay("if [ ! -e '" + mark + "' ]; then\n: >'" + mark + "'\n" + first + "else\n" +
                    Say(ReadyLine({})) + "fi\n" + Hear());
    DisplayProcess display(program);
    EXPECT_EQ(WhyNotOpened(display), program + " or its screen has ended") << first;
    EXPECT_TRUE(display.Open(kDialog)) << first;
  }
}

TEST_F(DisplayProcessTest, OneThatIsNotReadySaysWhy) {
  DisplayProcess display(MakeDisplay(Say(NotReadyLine("there is no screen"))));
  EXPECT_EQ(WhyNotOpened(display), "there is no screen");
  EXPECT_EQ(display.MainScreen(), (Rect{0, 0, 1080, 1920}));
}

// The host's own signals come all the time.
TEST_F(DisplayProcessTest, SignalsEndNoWaiting) {
  const std::string end = folder_ / "ended-by-itself";
  DisplayProcess display(MakeDisplay(Say(ReadyLine({})) + Hear() + "sleep 0.2\n" +
                                     Say(ActionLine(1, MakeAction(Action::Kind::kPress))) +
                                     "sleep 0.2\nexec 3>&-\nsleep 0.2\n: >'" + end + "'\n"));
  ASSERT_TRUE(display.Open(kDialog));
  struct sigaction before, handler{};
  handler.sa_handler = [](int) {};  // and nothing that was interrupted is restarted
  sigaction(SIGALRM, &handler, &before);
  const itimerval often{{0, 10000}, {0, 10000}}, never{};
  setitimer(ITIMER_REAL, &often, nullptr);
  EXPECT_TRUE(display.NextAction());
  EXPECT_FALSE(display.NextAction());
  setitimer(ITIMER_REAL, &never, nullptr);
  sigaction(SIGALRM, &before, nullptr);
  EXPECT_TRUE(std::filesystem::exists(end)) << "it is not killed before";
}

TEST_F(DisplayProcessTest, AnActionOfAnotherDialogIsDropped) {
  const Action press = MakeAction(Action::Kind::kPress);
  const Action escape = MakeAction(Action::Kind::kEscape);
  DisplayProcess display(MakeDisplay(Say(ReadyLine({.main_screen = {0, 0, 600, 800}})) + Hear() +
                                     Say(ActionLine(0, escape) + ActionLine(1, press)) + Hear() +
                                     Hear() + Say(ActionLine(1, press) + ActionLine(2, escape)) +
                                     Hear()));
  EXPECT_EQ(display.MainScreen(), (Rect{0, 0, 600, 800}));
  ASSERT_TRUE(display.Open(kDialog));
  const auto first = display.NextAction();
  ASSERT_TRUE(first);
  EXPECT_EQ(first->kind, press.kind);
  display.Close();
  ASSERT_TRUE(display.Open(kDialog));
  const auto second = display.NextAction();
  ASSERT_TRUE(second);
  EXPECT_EQ(second->kind, escape.kind);
}

}  // namespace
