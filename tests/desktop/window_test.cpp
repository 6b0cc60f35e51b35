// The window on the screen, and the life of the process behind it.

#include <fcntl.h>
#include <sys/wait.h>

#include <filesystem>
#include <fstream>

#include "tests/desktop/user_test.h"

namespace desktop_test {
namespace {

namespace fs = std::filesystem;

std::string Line(const std::string& file, const std::string& name) {
  std::ifstream stream(file);
  for (std::string line; std::getline(stream, line);) {
    if (line.starts_with(name)) return line.substr(name.size());
  }
  return "";
}

// The display processes that this process has started.
std::vector<pid_t> DisplayProcesses() {
  std::vector<pid_t> found;
  for (const auto& entry : fs::directory_iterator("/proc")) {
    const std::string status = entry.path() / "status";
    if (Line(status, "Name:\t") == "tarvo-desktop" &&
        Line(status, "PPid:\t") == std::to_string(getpid())) {
      found.push_back(std::stoi(entry.path().filename()));
    }
  }
  return found;
}

std::vector<std::string> DescriptorsOf(const std::string& process) {
  std::vector<std::string> targets;
  for (const auto& entry : fs::directory_iterator("/proc/" + process + "/fd")) {
    std::error_code gone;  // the one that the directory itself is read with
    targets.push_back(fs::read_symlink(entry.path(), gone).string());
  }
  return targets;
}

using Window = UserTest;

class ManagedWindow : public UserTest {
 protected:
  ManagedWindow() : UserTest(XSession::Manager::kOpenbox) {}

  // Where the content's corner is, seen from outside.
  std::string Corner(xcb_window_t window) {
    return OutputOf("xwininfo -id " + std::to_string(window) +
                    " | sed -n 's/ *Absolute upper-left .: *//p' | tr '\\n' ' '");
  }
};

TEST_F(ManagedWindow, ContentStandsOnItsPixelInsideTheFrame) {
  EXPECT_EQ(Corner(Open(Dialog({}, 0))), "300 200 ");
  display_.Close();
  display::Window outside = Dialog({}, 0, "Outside");
  outside.content = At(900, 1100, 1125, 1525);
  const xcb_window_t shown = Open(outside);
  EXPECT_TRUE(WaitFor([&] { return Corner(shown) == "1100 900 "; }));
}

TEST_F(ManagedWindow, CloseRequestIsReportedAndTheWindowStays) {
  user_.RequestClose(Open(Dialog({Field(1, ControlKind::kEdit)}, 1, "A title [*] & <b>")));
  EXPECT_EQ(Next(), "close");
  EXPECT_EQ(AfterKey("Return"), "return");
}

TEST_F(Window, CloseRequestWithoutWindowManager) {
  user_.RequestClose(Open(Dialog({}, 0)));
  EXPECT_EQ(Next(), "close");
  EXPECT_EQ(AfterKey("Escape"), "escape");
}

TEST_F(Window, LateActionsAnswerNoLaterDialog) {
  Open(Dialog({}, 0, "First"));
  user_.Key("Return Escape");
  EXPECT_EQ(Next(), "return");
  display_.Close();
  Open(Dialog({}, 0, "Second"));
  EXPECT_EQ(AfterKey("Tab space"), "press 1");
  EXPECT_EQ(DisplayProcesses().size(), 1U);  // kept from the first dialog
}

TEST_F(Window, ScreenIsThePrimaryOne) { EXPECT_EQ(display_.MainScreen(), At(0, 0, 1024, 1280)); }

TEST_F(Window, KilledDisplayEndsTheDialogAndTheNextOneStartsAnother) {
  Open(Dialog({}, 0));
  const pid_t first = DisplayProcesses().at(0);
  kill(first, SIGKILL);
  EXPECT_EQ(Next(), "gone");
  EXPECT_EQ(Next(), "gone");
  display_.Change(1, Button(1, 188, "OK"));
  display_.Close();
  EXPECT_EQ(waitpid(first, nullptr, WNOHANG), -1);  // reaped already

  Open(Dialog({}, 0));
  EXPECT_EQ(AfterKey("Return"), "return");
  display_.Close();
  const pid_t second = DisplayProcesses().at(0);
  kill(second, SIGKILL);  // between two dialogs
  siginfo_t ended;
  waitid(P_PID, static_cast<id_t>(second), &ended,
         WEXITED | WNOWAIT);  // all of it has ended, nothing is reaped
  Open(Dialog({}, 0));
  EXPECT_EQ(AfterKey("Return"), "return");
}

TEST(Screen, ServerThatEndsInMidDialogEndsTheDialog) {
  auto user = std::make_unique<XSession>(XSession::Manager::kNone);
  display::DesktopDisplay display;
  ASSERT_TRUE(display.Open(Dialog({}, 0)));
  ASSERT_NE(user->ActiveWindow("Dialog"), 0U);
  user.reset();
  EXPECT_EQ(Said(display.NextAction()), "gone");
  EXPECT_FALSE(display.Open(Dialog({}, 0)));
}

TEST(Screen, WithoutOneNothingOpens) {
  unsetenv("WAYLAND_DISPLAY");
  for (const char* nowhere : {"", ":4711"}) {
    setenv("DISPLAY", nowhere, 1);
    display::DesktopDisplay display;
    EXPECT_FALSE(display.Open(Dialog({}, 0)));
    EXPECT_EQ(display.MainScreen(), At(0, 0, 1080, 1920));
    EXPECT_TRUE(DisplayProcesses().empty());
  }
  unsetenv("DISPLAY");
}

TEST_F(Window, HostKeepsWhatIsItsOwn) {
  const int own = open("/proc/self/maps", O_RDONLY);  // without close-on-exec
  sigset_t blocked, before;
  sigemptyset(&blocked);
  sigaddset(&blocked, SIGUSR1);
  sigprocmask(SIG_BLOCK, &blocked, &before);
  const auto descriptors = DescriptorsOf("self").size();
  const std::string caught = Line("/proc/self/status", "SigCgt:\t");
  {
    display::DesktopDisplay display;
    ASSERT_TRUE(display.Open(Dialog({}, 0)));
    ASSERT_NE(user_.ActiveWindow("Dialog"), 0U);
    const std::string child = std::to_string(DisplayProcesses().at(0));
    for (const std::string& target : DescriptorsOf(child)) EXPECT_FALSE(target.ends_with("/maps"));
    EXPECT_EQ(Line("/proc/" + child + "/status", "SigBlk:\t"), "0000000000000000");
    EXPECT_EQ(Line("/proc/self/status", "SigCgt:\t"), caught);
    EXPECT_EQ(DescriptorsOf("self").size(), descriptors + 1);
  }
  EXPECT_EQ(DescriptorsOf("self").size(), descriptors);
  EXPECT_TRUE(DisplayProcesses().empty());  // it ends with its host
  sigprocmask(SIG_SETMASK, &before, nullptr);
  close(own);
}

}  // namespace
}  // namespace desktop_test
