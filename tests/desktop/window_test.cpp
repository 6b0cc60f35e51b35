// The window on the screen.

#include <filesystem>
#include <tuple>
#include <utility>

#include "tests/desktop/screen_reader.h"
#include "tests/desktop/user_test.h"
#include "tests/support/changed_variable.h"

namespace desktop_test {
namespace {

using Window = UserTest;

class ManagedWindow : public UserTest {
 protected:
  ManagedWindow() : UserTest(XSession::Manager::kOpenbox) {}

  // A list at a place that the window manager would not choose.
  static display::Window OutsideList() {
    display::Window list = ListDialog(false);
    list.content = At(900, 1100, 1225, 1525);
    return list;
  }

  void ExpectOutsideList(xcb_window_t window) {
    EXPECT_TRUE(WaitFor([&] { return Corner(window) == "1100 900 "; }));
    const std::string properties =
        XSession::Properties(window, "WM_NORMAL_HINTS _NET_WM_STATE _NET_WM_NAME");
    for (const char* part :
         {"maximum size: 425 by 325", "_NET_WM_STATE_ABOVE", "_NET_WM_STATE_MODAL", "= \"List\""}) {
      EXPECT_NE(properties.find(part), std::string::npos) << part << " in " << properties;
    }
    EXPECT_EQ(AfterKey("Tab Down"), "row 1");
  }

  static bool IsMapped(xcb_window_t window) {
    return OutputOf("xwininfo -id " + std::to_string(window)).find("IsUnMapped") ==
           std::string::npos;
  }

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

// A window serves every second dialog, wherever the user has left it.
TEST_F(ManagedWindow, ThatIsUsedAgainIsAsNew) {
  const xcb_window_t first = Open(Dialog({Field(1, ControlKind::kEdit, "Ann")}, 1, "First"));
  OutputOf("xdotool windowmove --sync " + std::to_string(first) + " 20 30");
  display_.Close();
  Open(display::Alert{1, "Second", "", "OK", {}, {}});
  display_.Close();
  EXPECT_EQ(Open(OutsideList()), first);
  ExpectOutsideList(first);
}

TEST_F(ManagedWindow, ThatWasMinimisedIsAsNewAndGone) {
  const xcb_window_t first = Open(Dialog({Field(1, ControlKind::kEdit, "Ann")}, 1, "First"));
  OutputOf("xdotool windowminimize --sync " + std::to_string(first));
  std::this_thread::sleep_for(std::chrono::milliseconds(700));  // it is not taken for removed
  user_.RequestClose(first);
  EXPECT_EQ(Next(), "close");
  display_.Close();
  Open(display::Alert{1, "Second", "", "OK", {}, {}});
  EXPECT_FALSE(IsMapped(first));
  display_.Close();
  ExpectOutsideList(Open(OutsideList()));
}

TEST_F(ManagedWindow, CloseRequestIsReportedAndTheWindowStays) {
  user_.RequestClose(Open(Dialog({Field(1, ControlKind::kEdit)}, 1, "A title [*] & <b>")));
  EXPECT_EQ(Next(), "close");
  EXPECT_EQ(AfterKey("Return"), "return");
}

constexpr const char* kRemoved = "another program has removed the dialog's window";

TEST_F(ManagedWindow, ThatAnotherProgramRemovesEndsTheDialogWithoutAnAnswer) {
  const auto unmap = [](xcb_window_t window) {
    OutputOf("xdotool windowunmap " + std::to_string(window));
  };
  unmap(Open(Dialog({}, 0)));
  EXPECT_EQ(Next(), "gone");
  EXPECT_EQ(display_.WhyLost(), kRemoved);
  user_.Destroy(Open(display::Alert{1, "Again", "", "OK", {}, {}}));
  EXPECT_EQ(Next(), "gone");
  EXPECT_EQ(display_.WhyLost(), kRemoved);
}

TEST_F(Window, ThatAnotherProgramRemovesEndsTheDialogWithoutWindowManager) {
  user_.Destroy(Open(Dialog({}, 0)));
  EXPECT_EQ(Next(), "gone");
  EXPECT_EQ(display_.WhyLost(), kRemoved);
  OutputOf("xdotool windowunmap " + std::to_string(Open(Dialog({}, 0))));
  EXPECT_EQ(Next(), "gone");
}

// Nobody else raises it there.
TEST_F(Window, ThatIsUsedAgainStandsAboveOthersWithoutWindowManager) {
  display::Window dialog = Dialog({}, 0);
  dialog.content = At(0, 0, 225, 425);
  const xcb_window_t first = Open(dialog);
  display_.Close();
  user_.MakeWindow();  // at the dialog's corner
  Open(dialog);
  display_.Close();
  EXPECT_EQ(Open(dialog), first);
}

TEST_F(Window, CloseRequestWithoutWindowManager) {
  user_.RequestClose(Open(Dialog({}, 0)));
  EXPECT_EQ(Next(), "close");
  EXPECT_EQ(AfterKey("Escape"), "escape");
}

TEST_F(ManagedWindow, IsModalAboveOthersAndOfFixedSize) {
  const std::string properties = XSession::Properties(
      Open(Dialog({}, 0)), "_NET_WM_WINDOW_TYPE _NET_WM_STATE _MOTIF_WM_HINTS WM_NORMAL_HINTS");
  for (const char* part :
       {"_NET_WM_WINDOW_TYPE_DIALOG", "_NET_WM_STATE_MODAL", "_NET_WM_STATE_ABOVE",
        "minimum size: 425 by 225", "maximum size: 425 by 225"}) {
    EXPECT_NE(properties.find(part), std::string::npos) << part << " in " << properties;
  }
}

// Without a window manager, which would give it an icon of its own.
TEST_F(Window, HasAnIconAndAName) {
  const auto expect = [](xcb_window_t window, const std::string& name) {
    const std::string properties = XSession::Properties(window, "_NET_WM_ICON_NAME _NET_WM_ICON");
    EXPECT_NE(properties.find("= \"" + name + '"'), std::string::npos) << properties;
    EXPECT_NE(properties.find("Icon (48 x 48)"), std::string::npos) << properties;
  };
  expect(Open(Dialog({}, 0)), "Dialog");
  display_.Close();
  expect(Open(Dialog({}, 0, "")), "Message");
  display_.Close();
  expect(Open(display::Alert{1, "Of the alert", "", "OK", {}, {}}), "Of the alert");
}

TEST_F(ManagedWindow, StaysAboveTheWindowThatTheHostNames) {
  const xcb_window_t host_window = user_.MakeWindow();
  for (const xcb_window_t named : {host_window, host_window + 1}) {  // the second is no window
    setenv("WINDOWID", std::to_string(named).c_str(), 1);
    display::DisplayProcess display("tarvo-desktop");  // reads the environment when it starts
    ASSERT_TRUE(display.Open(Dialog({}, 0, "Above")));
    const xcb_window_t shown = user_.ActiveWindow("Above");
    char hexadecimal[16];
    std::snprintf(hexadecimal, sizeof hexadecimal, "0x%x", named);
    EXPECT_NE(XSession::Properties(shown, "WM_TRANSIENT_FOR").find(hexadecimal), std::string::npos);
    const bool above_all =
        XSession::Properties(shown, "_NET_WM_STATE").find("ABOVE") != std::string::npos;
    EXPECT_EQ(above_all, named != host_window);
  }
  unsetenv("WINDOWID");
}

std::string Place(xcb_window_t window) {
  const std::string geometry = OutputOf("xdotool getwindowgeometry " + std::to_string(window));
  const std::size_t start = geometry.find("Position: ") + 10;
  return geometry.substr(start, geometry.find(' ', start) - start);
}

std::pair<int, int> Numbers(const std::string& place) {
  return {std::stoi(place), std::stoi(place.substr(place.find(',') + 1))};
}

TEST_F(Window, StandsOnThePrimaryScreenAndCountsFromItsCorner) {
  EXPECT_EQ(display_.MainScreen(), At(0, 0, 1024, 1280));
  OutputOf(
      "xrandr --newmode small 31.5 800 840 968 1056 600 601 605 628;"
      "xrandr --addmode screen small; xrandr --output screen --mode small");
  EXPECT_TRUE(WaitFor([&] { return display_.MainScreen() == At(0, 0, 600, 800); }));
  OutputOf("xrandr --output screen --mode 1280x1024");
  EXPECT_TRUE(WaitFor([&] { return display_.MainScreen() == At(0, 0, 1024, 1280); }));
  OutputOf("xrandr --setmonitor first 600/160x1024/270+0+0 screen");
  OutputOf("xrandr --setmonitor '*second' 680/180x1024/270+600+0 none");
  EXPECT_TRUE(WaitFor([&] { return display_.MainScreen() == At(0, 0, 1024, 680); }));
  display::Window dialog = Dialog({}, 0);
  dialog.content = At(0, 0, 225, 425);
  ASSERT_TRUE(display_.Open(dialog));
  EXPECT_EQ(Place(user_.ActiveWindow(dialog.title)), "600,0");
  display_.Close();
  const xcb_window_t alert = Open(display::Alert{1, "On the second", "", "OK", {}, {}});
  EXPECT_EQ(Place(alert).substr(0, 4), "720,") << "in the middle of it";
}

TEST_F(Window, OfAnAlertStandsOverTheWindowThatTheHostNames) {
  const std::string host_window = std::to_string(user_.MakeWindow());
  OutputOf("xdotool windowsize " + host_window + " 400 300 windowmove " + host_window + " 700 500");
  setenv("WINDOWID", host_window.c_str(), 1);
  display::Alert alert{1, "Over it", "", "OK", {}, {}};
  alert.position = 0xB00A;
  const auto stands_at = [&](const std::string& place) {  // once the one before has gone
    Open(alert);
    return WaitFor([&] { return Place(user_.ActiveWindow(" ")).starts_with(place); });
  };
  EXPECT_TRUE(stands_at("680,5"));
  display_.Close();
  OutputOf("xrandr --setmonitor second 640/170x1024/270+640+0 none");
  OutputOf("xrandr --setmonitor '*first' 640/170x1024/270+0+0 screen");
  EXPECT_TRUE(WaitFor([&] { return display_.MainScreen() == At(0, 0, 1024, 640); }));  // knows both
  EXPECT_TRUE(stands_at("680,5")) << "on the screen of that window";
  display_.Close();
  alert.position = 0;
  EXPECT_TRUE(stands_at("100,")) << "on the main screen";
  display_.Close();
  alert.position = 0xB00A;
  OutputOf("xrandr --delmonitor second; xrandr --delmonitor first");
  OutputOf("xdotool windowmove " + host_window + " 1200 0");
  EXPECT_TRUE(stands_at("840,")) << "moved onto the screen";
  display_.Close();
  alert.position = 0;
  EXPECT_TRUE(stands_at("420,")) << "in the middle of the screen";
  unsetenv("WINDOWID");
}

TEST_F(Window, OfAnAlertRunsFromRightToLeftWhereTheLanguageDoes) {
  for (const auto& [language, message] :
       {std::pair{"C.UTF-8", "מחיקה"}, {"he_IL.UTF-8", "Delete?"}}) {
    const testing_tools::ChangedVariable users("LC_ALL", language);
    display::DisplayProcess display("tarvo-desktop");
    ASSERT_TRUE(display.Open(display::Alert{0, message, "", "OK", "Cancel", {}}));
    const auto [x, y] = Numbers(Place(user_.ActiveWindow(" ")));
    EXPECT_TRUE(WaitFor([&, x = x, y = y] { return user_.PixelAt(x + 386, y + 58) == 0xd6333b; }))
        << message;
    user_.Click(x + 60, y + 108);
    EXPECT_EQ(Said(display.NextAction()), "press 1") << "where its button is otherwise rightmost";
  }
}

// Live, and each for itself.
TEST_F(Window, TakesTheColoursThatTheDesktopTells) {
  ScreenReader::Get();  // and with it a session bus
  const testing_tools::TemporaryFolder folder;
  const auto set = [&folder](const std::string& setting) {
    return folder.Write("settings", "[org.freedesktop.appearance]\n" + setting + '\n');
  };
  const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe");
  const Process portal({program.parent_path() / "desktop_portal", set("color-scheme=0")},
                       Process::Output::kRead);
  ASSERT_EQ(portal.Line(), "ready");
  Open(Dialog({}, 0));
  for (const auto& [setting, window, button] : {std::tuple{"color-scheme=1", 0x2b2c2fU, 0x296daeU},
                                                {"accent-color=1,0,0", 0xefefefU, 0xde0000U},
                                                {"contrast=1", 0xffffffU, 0x1c5071U},
                                                {"color-scheme=0", 0xefefefU, 0x2a7aacU}}) {
    set(setting);
    EXPECT_TRUE(WaitFor([&, window = window, button = button] {
      return user_.PixelAt(kLeft + 1, kTop + 1) == window &&
             user_.PixelAt(kLeft + 335, kTop + 204) == button;
    })) << setting
        << std::hex << user_.PixelAt(kLeft + 1, kTop + 1) << ' '
        << user_.PixelAt(kLeft + 335, kTop + 204);
  }
}

TEST_F(Window, OfAnAlertShowsTheIconOfItsKind) {
  for (const auto& [type, colour] :
       {std::pair{0, 0xd6333bU}, {1, 0x2f7dd8U}, {2, 0xf6c02cU}, {3, 0x76808cU}}) {
    const auto [left, top] = Numbers(Place(Open(display::Alert{type, "Kind", "", "OK", {}, {}})));
    const int x = left + 34;  // beside its mark
    const int y = top + 58;
    EXPECT_TRUE(WaitFor([&, colour = colour] { return user_.PixelAt(x, y) == colour; })) << type;
    display_.Close();
  }
}

}  // namespace
}  // namespace desktop_test
