// The same windows on Wayland: a compositor that is itself a window on the tests' X server, so that
// its keys are real ones.

#include "tests/desktop/screen_reader.h"
#include "tests/desktop/user_test.h"
#include "tests/support/changed_variable.h"

namespace desktop_test {
namespace {

class Wayland : public UserTest {
 protected:
  // The compositor's window covers the screen and has the keyboard.
  Wayland() {
    const std::string socket = "wayland-" + std::to_string(getpid());
    const std::filesystem::path file = std::filesystem::path(getenv("XDG_RUNTIME_DIR")) / socket;
    compositor_ = std::make_unique<Process>(std::vector<std::string>{
        "weston", "--backend=x11-backend.so", "--width=1280", "--height=1024", "--idle-time=0",
        "--socket=" + socket, "--log=" + file.string() + ".log"});
    WaitFor([&] { return std::filesystem::exists(file); });
    OutputOf("xdotool search --sync --onlyvisible --class weston windowfocus");
    setenv("WAYLAND_DISPLAY", socket.c_str(), 1);
  }
  ~Wayland() override { unsetenv("WAYLAND_DISPLAY"); }

  // Starts a display that sees no X server.
  bool OpenOnWayland(const display::Description& dialog) {
    const testing_tools::ChangedVariable x_server("DISPLAY", nullptr);
    return display_.Open(dialog);
  }

  ScreenReader& reader_ = ScreenReader::Get();
  std::unique_ptr<Process> compositor_;
};

TEST_F(Wayland, DialogsAreAnsweredByKeys) {
  ASSERT_TRUE(OpenOnWayland(Dialog({Field(1, ControlKind::kEdit), PopupField(2, {"Red", "Blue"}),
                                    Field(3, ControlKind::kCheckBox)},
                                   1, "Ask")));
  ASSERT_TRUE(reader_.WaitForLine("dialog: Ask (Message) active modal"));
  EXPECT_EQ(display_.MainScreen(), At(0, 0, 1024, 1280));
  user_.Type("Ann");
  EXPECT_EQ(AfterKey("Tab Down"), "enter 1 Ann");
  EXPECT_EQ(Next(), "choose 2 2");
  OutputOf("xdotool keydown space");  // the compositor opens no menu for a key that is up again
  EXPECT_TRUE(reader_.WaitForLine("  combo box: Label 2 (Blue) expanded"));
  OutputOf("xdotool keyup space");
  EXPECT_EQ(AfterKey("Up Return"), "choose 2 1");
  EXPECT_EQ(AfterKey("Tab space"), "click 3");
  EXPECT_EQ(AfterKey("Tab space"), "press 1");
  EXPECT_EQ(AfterKey("Return"), "return");
  EXPECT_EQ(AfterKey("Escape"), "escape");
  display_.Close();

  ASSERT_TRUE(display_.Open(ListDialog(false)));
  ASSERT_TRUE(reader_.WaitForLine("dialog: List (Message) active focused modal"));
  EXPECT_EQ(AfterKey("Tab Down"), "row 1");
  display_.Close();

  ASSERT_TRUE(display_.Open(display::Alert{2, "Delete?", "", "Delete", "Keep", {}}));
  ASSERT_TRUE(reader_.WaitForLine("alert message: Delete? active modal"));
  EXPECT_EQ(AfterKey("Tab space"), "press 2");
}

// Its socket may go by its whole path.
TEST_F(Wayland, CompositorThatEndsInMidDialogEndsTheDialog) {
  const std::filesystem::path folder = getenv("XDG_RUNTIME_DIR");
  setenv("WAYLAND_DISPLAY", (folder / getenv("WAYLAND_DISPLAY")).c_str(), 1);
  ASSERT_TRUE(OpenOnWayland(Dialog({}, 0, "Ask")));
  ASSERT_TRUE(reader_.WaitForLine("dialog: Ask (Message) active focused modal"));
  compositor_.reset();
  EXPECT_EQ(Next(), "gone");
  EXPECT_FALSE(OpenOnWayland(Dialog({}, 0)));
}

}  // namespace
}  // namespace desktop_test
