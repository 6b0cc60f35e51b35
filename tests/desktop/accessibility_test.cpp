// What a screen reader is told, and what it does for its user.

#include "tests/desktop/screen_reader.h"
#include "tests/desktop/user_test.h"
#include "tests/support/changed_variable.h"

namespace desktop_test {
namespace {

class Accessibility : public UserTest {
 protected:
  ScreenReader& reader_ = ScreenReader::Get();
};

// The cancel control is no part of it, whether Escape is allowed or not.
TEST_F(Accessibility, DialogIsToldInFull) {
  display::Window dialog =
      Dialog({Field(1, ControlKind::kEdit, "Ann"), Field(2, ControlKind::kPassword),
              PopupField(3, {"Red", "Blue"}), Field(4, ControlKind::kCheckBox)},
             1, "Ask");
  dialog.controls[FieldIndex(4)].value = 1;
  dialog.controls[2].enabled = false;
  Open(dialog);
  ASSERT_TRUE(reader_.WaitForLine("    list item: Blue"));
  std::string tree = reader_.Tree();
  const std::string chosen = " focused selected";  // Qt 6.8 says that of a closed menu's item, too
  if (const auto at = tree.find(chosen); at != std::string::npos) tree.erase(at, chosen.size());
  EXPECT_EQ(tree,
            "dialog: Ask (Message) active modal\n"
            "  label: Message\n"
            "  push button: OK default\n"
            "  push button: Cancel disabled\n"
            "  label: Label 1\n"
            "  text: Label 1 [Ann] focused\n"
            "  label: Label 2\n"
            "  password text: Label 2\n"
            "  label: Label 3\n"
            "  combo box: Label 3 (Red)\n"
            "    list: \n"
            "      list item: Red\n"
            "      list item: Blue\n"
            "  label: Label 4\n"
            "  check box: Label 4 checked\n");
  user_.Key("Tab");
  user_.Type("secret");
  EXPECT_TRUE(reader_.WaitForLine("  password text: Label 2 focused"));
  EXPECT_EQ(reader_.Tree().find("secret"), std::string::npos);
}

// Typed, put in and deleted: what is told is the mask.
TEST_F(Accessibility, PasswordNeverCrossesTheBus) {
  const testing_tools::TemporaryFolder folder;
  const std::string file = folder / "events";
  const auto told = [&](const std::string& text) {
    return OutputOf("cat '" + file + "'").find("string \"" + text + "\"") != std::string::npos;
  };
  Open(Dialog({Field(1, ControlKind::kPassword), Field(2, ControlKind::kEdit)}, 1));
  ASSERT_TRUE(reader_.WaitForLine("  password text: Label 1 focused"));
  const auto recording = reader_.Record(file);
  user_.Type("qzx");
  user_.Key("BackSpace");
  reader_.Enter("Label 1", "dictated");
  user_.Key("End BackSpace Tab k Return");
  EXPECT_EQ(Next(), "enter 1 dictate");
  EXPECT_TRUE(WaitFor([&] { return told("k"); })) << "the field beside it is told";
  for (const char* secret : {"q", "z", "x", "qz", "dictated", "d"}) EXPECT_FALSE(told(secret));
  EXPECT_TRUE(told("●"));
}

TEST_F(Accessibility, ControlThatBecomesVisibleIsToldThen) {
  display::Window dialog = Dialog({Field(1, ControlKind::kRadio)}, 1);
  Control& radio = dialog.controls[FieldIndex(1)];
  radio.visible = false;
  Open(dialog);
  ASSERT_TRUE(reader_.WaitForLine("  label: Label 1"));
  EXPECT_EQ(reader_.Tree().find("radio"), std::string::npos);
  radio.visible = true;
  display_.Change(FieldIndex(1), radio);
  EXPECT_TRUE(reader_.WaitForLine("  radio button: Label 1"));
  EXPECT_EQ(AfterKey("Tab space"), "click 1");
}

TEST_F(Accessibility, ListIsToldRowByRow) {
  display::Window dialog = ListDialog(true);
  dialog.controls[kListIndex].rows->at(1) = "Second";
  dialog.controls[kListIndex].selected = {2};
  Open(dialog);
  EXPECT_TRUE(reader_.WaitForLine("  list: List"));
  EXPECT_TRUE(reader_.WaitForLine("    list item: Second selected"));
  EXPECT_EQ(AfterKey("Tab Down Down"), "row 1");
  EXPECT_TRUE(reader_.WaitForLine("    list item: Second focused selected"));
  EXPECT_EQ(Next(), "row 2");
  reader_.Act("Second");
  EXPECT_EQ(Next(), "row+ 2");
  EXPECT_EQ(AfterKey("space"), "row 2");
  EXPECT_EQ(AfterKey("space"), "row 2") << "though a reader sees each key first";
}

TEST_F(Accessibility, AlertIsToldWithItsTexts) {
  Open(display::Alert{2, "Delete?", "For good.", "Delete", "Keep", {}});
  ASSERT_TRUE(reader_.WaitForLine("  push button: Keep"));
  EXPECT_EQ(reader_.Tree(),
            "alert message: Delete? For good. active modal\n"
            "  filler: \n"
            "    label: Delete?\n"
            "    label: For good.\n"
            "  push button: Delete focused default\n"
            "  push button: Keep\n"
            "  filler: \n");  // the icon
}

// A window on the screen serves every second dialog; hidden, it tells nothing.
TEST_F(Accessibility, WindowThatIsUsedAgainIsToldAnew) {
  Open(Dialog({Field(1, ControlKind::kEdit, "Ann")}, 1, "First"));
  display_.Close();
  Open(display::Alert{2, "Second", "For good.", "Delete", "Keep", "More"});
  display_.Close();
  display::Window third = Dialog({Field(1, ControlKind::kCheckBox)}, 0, "Third");
  third.controls.erase(third.controls.begin());  // the message
  Open(third);
  ASSERT_TRUE(reader_.WaitForLine("  check box: Label 1"));
  EXPECT_EQ(reader_.Tree(),
            "dialog: Third active focused modal\n"
            "  push button: OK default\n"
            "  push button: Cancel\n"
            "  label: Label 1\n"
            "  check box: Label 1\n"
            "alert message: \n");
  display_.Close();
  Open(display::Alert{1, "Fourth", "", "Done", {}, {}});
  ASSERT_TRUE(reader_.WaitForLine("  push button: Done focused default"));
  EXPECT_EQ(reader_.Tree(),
            "dialog: \n"
            "alert message: Fourth active modal\n"
            "  filler: \n"
            "    label: Fourth\n"
            "  push button: Done focused default\n"
            "  filler: \n");
}

TEST_F(Accessibility, BusOfTheUsersRuntimeFolderServes) {
  const testing_tools::ChangedVariable address("DBUS_SESSION_BUS_ADDRESS", nullptr);
  Open(display::Alert{1, "Here", "", "OK", {}, {}});
  EXPECT_TRUE(reader_.WaitForLine("alert message: Here active modal"));
}

TEST_F(Accessibility, ScreenReaderActsForItsUser) {
  Open(Dialog({Field(1, ControlKind::kEdit), Field(2, ControlKind::kCheckBox),
               PopupField(3, {"Red", "Green", "Blue"})},
              1));
  ASSERT_TRUE(reader_.WaitForLine("      list item: Blue"));
  reader_.Enter("Label 1", "dictated");
  reader_.Act("Label 2");
  EXPECT_EQ(Next(), "enter 1 dictated");
  EXPECT_EQ(Next(), "click 2");
  reader_.Act("Blue");
  EXPECT_EQ(Next(), "choose 3 3") << "in the closed menu";
  reader_.Act("Label 3");
  ASSERT_TRUE(reader_.WaitForLine("  combo box: Label 3 (Blue) expanded"));
  reader_.Act("Green");
  EXPECT_EQ(Next(), "choose 3 2") << "in the open one";
  ASSERT_TRUE(reader_.WaitForLine("  combo box: Label 3 (Green)"));
  reader_.Act("Cancel");
  EXPECT_EQ(Next(), "press 2");
}

}  // namespace
}  // namespace desktop_test
