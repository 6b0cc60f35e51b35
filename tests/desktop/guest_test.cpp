// The process behind the windows, and the process whose guest it is.

#include <sys/wait.h>

#include <QtGlobal>
#include <string_view>

#include "tests/desktop/processes.h"
#include "tests/desktop/user_test.h"
#include "tests/support/changed_variable.h"
#include "tests/support/temporary_folder.h"

namespace desktop_test {
namespace {

// The display processes that a process has started, this one if no other.
std::vector<pid_t> DisplayProcesses(pid_t host = getpid()) {
  std::vector<pid_t> found;
  for (const auto& entry : fs::directory_iterator("/proc")) {
    const std::string status = entry.path() / "status";
    if (Line(status, "Name:\t") == "tarvo-desktop" &&
        Line(status, "PPid:\t") == std::to_string(host)) {
      found.push_back(std::stoi(entry.path().filename()));
    }
  }
  return found;
}

using Guest = UserTest;

TEST_F(Guest, LateActionsAnswerNoLaterDialog) {
  Open(Dialog({}, 0, "First"));
  user_.Key("Return Escape");
  EXPECT_EQ(Next(), "return");
  display_.Close();
  Open(Dialog({}, 0, "Second"));
  EXPECT_EQ(AfterKey("Tab space"), "press 1");
  EXPECT_EQ(DisplayProcesses().size(), 1U);  // kept from the first dialog
}

// The key reaches the window of the first dialog; the display sees it when the second one is open.
TEST_F(Guest, KeyOnItsWayToADialogAnswersNoLaterOne) {
  Open(Dialog({}, 0, "First"));
  const pid_t display = DisplayProcesses().at(0);
  kill(display, SIGSTOP);
  user_.Key("Return");
  display_.Close();
  display_.Open(Dialog({}, 0, "Second"));
  kill(display, SIGCONT);
  ASSERT_NE(user_.ActiveWindow("Second"), 0U);
  EXPECT_EQ(AfterKey("Escape"), "escape");
}

// What a process holds in its memory that can be written to, as one text.
std::string MemoryOf(pid_t process) {
  const std::string folder = "/proc/" + std::to_string(process);
  std::ifstream maps(folder + "/maps"), memory(folder + "/mem", std::ios::binary);
  std::string whole;
  for (std::string line; std::getline(maps, line);) {
    std::uintptr_t from = 0, to = 0;
    char writable = '-';
    std::sscanf(line.c_str(), "%zx-%zx r%c", &from, &to, &writable);
    if (writable != 'w' || to - from > 64U << 20U) continue;  // a sanitizer's own is larger
    std::string part(to - from, '\0');
    memory.clear();
    memory.seekg(static_cast<std::streamoff>(from));
    memory.read(part.data(), static_cast<std::streamsize>(part.size()));
    whole += part;
  }
  return whole;
}

// Looked for as Qt keeps texts, two bytes a character.
TEST_F(Guest, PasswordIsGoneFromMemoryWithItsDialog) {
  if (!std::string_view(qVersion()).starts_with("6.4.")) {
    GTEST_SKIP() << "later Qts keep a copy that is out of reach";
  }
  const auto holds = [](const std::string& text) {
    std::string wide;
    for (const char letter : text) wide += {letter, '\0'};
    return MemoryOf(DisplayProcesses().at(0)).find(wide) != std::string::npos;
  };
  Open(Dialog({Field(1, ControlKind::kPassword)}, 1, "Secret"));
  user_.Type("Quixotry");
  user_.Key("Return");
  EXPECT_EQ(Next(), "enter 1 Quixotry");
  EXPECT_TRUE(holds("Quixotry"));
  display_.Close();
  Open(Dialog({}, 0, "Next"));
  EXPECT_FALSE(holds("Quix"));
}

// Qt would start one, with the help of a program of that name.
TEST_F(Guest, StartsNoSessionBus) {
  if (fs::exists("/usr/bin/dbus-launch")) GTEST_SKIP() << "the system's own would be started";
  const testing_tools::TemporaryFolder folder;
  folder.Write("bus", "no socket");
  const std::string log = folder / "started";
  fs::permissions(folder.Write("dbus-launch", "#!/bin/sh\ntouch " + log), fs::perms::owner_all);
  const testing_tools::ChangedVariable path("PATH", ((folder / "") + ":" + getenv("PATH")).c_str());
  const testing_tools::ChangedVariable address("DBUS_SESSION_BUS_ADDRESS", nullptr);
  const testing_tools::ChangedVariable runtime("XDG_RUNTIME_DIR", (folder / "").c_str());
  Open(Dialog({}, 0));
  EXPECT_EQ(AfterKey("Return"), "return");
  EXPECT_FALSE(fs::exists(log));
}

TEST_F(Guest, HeldKeyAnswersOnceAndNoLaterDialog) {
  OutputOf("xset r rate 30 100; xdotool keydown Return");
  Open(Dialog({Field(1, ControlKind::kEdit)}, 1, "Held"));
  OutputOf("xdotool keyup Return keydown Return");
  EXPECT_EQ(Next(), "return");
  display_.Close();
  const xcb_window_t next = Open(Dialog({Field(1, ControlKind::kEdit)}, 1, "Next"));
  EXPECT_TRUE(user_.WaitForKeys(next, 5)) << "the key is repeated meanwhile";
  OutputOf("xdotool keyup Return");
  EXPECT_EQ(AfterKey("Escape"), "escape");
}

TEST_F(Guest, HeldSpaceTypesInAFieldAndPressesOnce) {
  OutputOf("xset r rate 30 100");
  const xcb_window_t window = Open(Dialog({Field(1, ControlKind::kEdit)}, 1));
  OutputOf("xdotool keydown space");
  EXPECT_TRUE(user_.WaitForKeys(window, 5));
  OutputOf("xdotool keyup space key Return");
  EXPECT_TRUE(Next().starts_with("enter 1    "));
  EXPECT_EQ(Next(), "return");
  OutputOf("xdotool key Tab keydown space");
  EXPECT_TRUE(user_.WaitForKeys(window, 5));
  OutputOf("xdotool keyup space key Return");
  EXPECT_EQ(Next(), "press 1");
  EXPECT_EQ(Next(), "return");
}

// A screen on which another program has the keyboard, and a user who is slow to look up.
class Typing : public UserTest {
 protected:
  explicit Typing(XSession::Manager manager = XSession::Manager::kNone) : UserTest(manager) {
    other_ = user_.MakeWindow();
    setenv("TARVO_KEY_GRACE", "60000", 1);
  }

  xcb_window_t OpenOverOther(const std::string& title) {
    const std::string other = std::to_string(other_);
    OutputOf("xdotool windowfocus --sync " + other + " windowactivate " + other + " 2>/dev/null");
    return Open(Dialog({Field(1, ControlKind::kCheckBox)}, 1, title));
  }

  xcb_window_t other_;
};

class ManagedTyping : public Typing {
 protected:
  ManagedTyping() : Typing(XSession::Manager::kOpenbox) {}
};

TEST_F(Typing, AnswersNoDialogThatComesUnexpected) {
  OpenOverOther("First");
  user_.Key("Return space KP_Enter Escape");
  EXPECT_EQ(AfterClick(155, 67), "click 1") << "and nothing before";
  display_.Close();
  OpenOverOther("Second");
  EXPECT_EQ(AfterKey("Return"), "return") << "it follows the answer to the first";
}

TEST_F(ManagedTyping, AnswersNoDialogThatComesUnexpected) {
  OpenOverOther("First");
  user_.Key("Return space KP_Enter Escape");
  EXPECT_EQ(AfterClick(155, 67), "click 1");
}

TEST_F(ManagedTyping, InTheHostsWindowAnswersAtOnce) {
  OutputOf("xprop -id " + std::to_string(other_) + " -f _NET_WM_PID 32c -set _NET_WM_PID " +
           std::to_string(getpid()));
  OpenOverOther("Asked for");
  EXPECT_EQ(AfterKey("space"), "click 1");
}

TEST_F(Guest, KilledDisplayEndsTheDialogAndTheNextOneStartsAnother) {
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

// A host of its own process, with a dialog in front of the user.
class SeparateHost : public Guest {
 protected:
  std::unique_ptr<Process> Start(const std::string& option = "") {
    const fs::path program = fs::read_symlink("/proc/self/exe").parent_path() / "desktop_host";
    std::vector<std::string> words{program.string()};
    if (!option.empty()) words.push_back(option);
    auto host = std::make_unique<Process>(words, Process::Output::kRead);
    EXPECT_NE(user_.ActiveWindow("Dialog"), 0U);
    return host;
  }
};

TEST_F(SeparateHost, KeepsItsOwnAndLoadsNoToolkit) {
  const auto host = Start();
  const std::string child = std::to_string(DisplayProcesses(host->Id()).at(0));
  EXPECT_EQ(Line("/proc/" + child + "/status", "SigBlk:\t"), "0000000000000000");
  for (const std::string& target : DescriptorsOf(child)) EXPECT_FALSE(target.ends_with("/maps"));
  user_.Key("Return Escape");
  EXPECT_EQ(host->Line(), "return");
  EXPECT_EQ(host->Line(), "escape");
  EXPECT_EQ(host->Line().substr(0, 7), "socket:");  // and nothing else has changed
  EXPECT_EQ(host->Line(), "");
}

TEST_F(SeparateHost, DialogIsDrawnWhileItIsStopped) {
  const auto host = Start();
  const auto field_is_framed_like_a_button = [&] {
    return user_.PixelAt(kLeft + 280, kTop + 56) == user_.PixelAt(kLeft + 263, kTop + 191);
  };
  ASSERT_TRUE(WaitFor([&] { return !field_is_framed_like_a_button(); }));  // it has the focus
  host->Signal(SIGSTOP);
  ASSERT_TRUE(WaitFor([&] {
    return Line("/proc/" + std::to_string(host->Id()) + "/status", "State:\t").starts_with("T");
  }));
  user_.Type("meanwhile");
  user_.Key("Tab Escape");
  EXPECT_TRUE(WaitFor(field_is_framed_like_a_button));
  host->Signal(SIGCONT);
  EXPECT_EQ(host->Line(), "enter 1 meanwhile");
  EXPECT_EQ(host->Line(), "escape");
}

TEST_F(SeparateHost, DisplayEndsWhenItIsKilledThoughAChildHoldsItsSocket) {
  auto host = Start("--leave-child");
  const pid_t display = DisplayProcesses(host->Id()).at(0);
  host->Signal(SIGKILL);
  host.reset();
  EXPECT_TRUE(WaitFor([&] {
    const std::string state = Line("/proc/" + std::to_string(display) + "/status", "State:\t");
    return state.empty() || state.starts_with("Z");  // gone, or not yet reaped
  }));
}

TEST(Screen, ServerThatEndsInMidDialogEndsTheDialog) {
  auto user = std::make_unique<XSession>(XSession::Manager::kNone);
  display::DisplayProcess display("tarvo-desktop");
  ASSERT_TRUE(display.Open(Dialog({}, 0)));
  ASSERT_NE(user->ActiveWindow("Dialog"), 0U);
  user.reset();
  EXPECT_EQ(Said(display.NextAction()), "gone");
  EXPECT_EQ(display.WhyLost(), "tarvo-desktop or its screen has ended");
  EXPECT_FALSE(display.Open(Dialog({}, 0)));
}

TEST(Screen, MayStartAnewWithItsLastClient) {
  for (int i = 0; i < 5; ++i) {
    const Process server({"Xvfb", "-displayfd", "1", "-nolisten", "tcp"}, Process::Output::kRead);
    setenv("DISPLAY", (":" + server.Line()).c_str(), 1);
    display::DisplayProcess display("tarvo-desktop");
    EXPECT_TRUE(display.Open(Dialog({}, 0)));
  }
  unsetenv("DISPLAY");
}

TEST(Screen, WithoutOneNothingOpens) {
  unsetenv("WAYLAND_DISPLAY");
  struct Case {
    const char* platform;
    const char* nowhere;
    const char* reason;
  };
  for (const auto& [platform, nowhere, reason] :
       {Case{"", "", "neither DISPLAY nor WAYLAND_DISPLAY is set"},
        Case{"", ":4711", "no answer from the screen :4711"}, Case{"xcb", "", "DISPLAY is not set"},
        Case{"wayland", ":4711", "WAYLAND_DISPLAY is not set"}}) {
    const testing_tools::ChangedVariable chosen("QT_QPA_PLATFORM", platform);
    setenv("DISPLAY", nowhere, 1);
    display::DisplayProcess display("tarvo-desktop");
    EXPECT_FALSE(display.Open(Dialog({}, 0)));
    EXPECT_EQ(display.WhyLost(), reason);
    EXPECT_EQ(display.MainScreen(), At(0, 0, 1080, 1920));
    EXPECT_TRUE(DisplayProcesses().empty());
  }
  unsetenv("DISPLAY");
}

}  // namespace
}  // namespace desktop_test
