// Each kind of control, used by keys and pointer.

#include <algorithm>
#include <cmath>
#include <filesystem>

#include "tests/desktop/user_test.h"
#include "tests/support/changed_variable.h"

namespace desktop_test {
namespace {

using Controls = UserTest;

// Grows with the number of the display's windows.
std::size_t VisibleWindows() {
  return OutputOf("xdotool search --onlyvisible --class tarvo-desktop 2> /dev/null").size();
}

TEST_F(Controls, EditedFieldsAreReportedOnceBeforeTheNextAction) {
  const std::string long_text(40000, 'x');  // Qt's own limit is lower
  Open(Dialog({Field(1, ControlKind::kEdit, "Ann"), Field(2, ControlKind::kPassword),
               Field(3, ControlKind::kEdit, long_text), Field(4, ControlKind::kEdit, "as it was")},
              1));
  user_.Key("End");
  user_.Type(" & <b>Lee</b>");
  user_.Key("Tab");
  user_.Type("secret");
  user_.Key("Tab End y Return");
  EXPECT_EQ(Next(), "enter 1 Ann & <b>Lee</b>");
  EXPECT_EQ(Next(), "enter 2 secret");
  EXPECT_EQ(Next(), "enter 3 " + long_text + 'y');
  EXPECT_EQ(Next(), "return");
  EXPECT_EQ(AfterKey("KP_Enter"), "return");
}

TEST_F(Controls, HostsTextReplacesWhatTheFieldShows) {
  display::Window dialog = Dialog({Field(1, ControlKind::kEdit, "before")}, 1);
  Open(dialog);
  Control& field = dialog.controls[FieldIndex(1)];
  field.text = "after";
  display_.Change(FieldIndex(1), field);
  dialog.controls[1].text = "Changed";  // seen when the change before it has been shown, too
  const unsigned before = user_.PixelAt(kLeft + 330, kTop + 200);
  dialog.controls[1].enabled = false;
  display_.Change(1, dialog.controls[1]);
  ASSERT_TRUE(user_.WaitForChange(kLeft + 330, kTop + 200, before));
  user_.Key("End");
  user_.Type("!");
  user_.Key("Return");
  EXPECT_EQ(Next(), "enter 1 after!");
  EXPECT_EQ(Next(), "return");
}

TEST_F(Controls, PasswordIsNotOfferedToTheClipboard) {
  Open(Dialog({Field(1, ControlKind::kPassword), Field(2, ControlKind::kEdit)}, 1));
  user_.Type("secret");
  user_.Key("ctrl+a ctrl+c Tab ctrl+v x Return");
  EXPECT_EQ(Next(), "enter 1 secret");
  EXPECT_EQ(Next(), "enter 2 x");
}

TEST_F(Controls, ClipboardGoesBetweenFieldsAndOtherPrograms) {
  OutputOf("printf 'Grüße 東京 🎁' | xclip -selection clipboard > /dev/null");
  Open(Dialog({Field(1, ControlKind::kEdit), Field(2, ControlKind::kEdit)}, 1));
  EXPECT_EQ(AfterKey("ctrl+v Home x shift+End ctrl+x Tab ctrl+v Return"), "enter 1 x");
  EXPECT_EQ(Next(), "enter 2 Grüße 東京 🎁");
  EXPECT_EQ(OutputOf("xclip -selection clipboard -o"), "Grüße 東京 🎁");
}

TEST_F(Controls, MenuOfAFieldSpeaksTheUsersLanguage) {
  if (!std::filesystem::exists("/usr/share/qt6/translations/qtbase_de.qm")) {
    GTEST_SKIP() << "Qt's translations are not installed";
  }
  const testing_tools::ChangedVariable language("LC_ALL", "de_DE.UTF-8");
  Open(Dialog({Field(1, ControlKind::kEdit, "Ann")}, 1));
  const auto alone = VisibleWindows();
  user_.Key("Menu");
  EXPECT_TRUE(WaitFor([&] { return VisibleWindows() > alone; }));
  user_.Key("k");  // "Kopieren" by its letter
  EXPECT_TRUE(WaitFor(
      [] { return OutputOf("timeout 1 xclip -selection clipboard -o 2>/dev/null") == "Ann"; }));
}

TEST_F(Controls, FocusIsSeenOnEveryKind) {
  Open(Dialog({Field(1, ControlKind::kEdit), PopupField(2, {"Red"}),
               Field(3, ControlKind::kCheckBox), Field(4, ControlKind::kRadio)},
              0));
  struct Place {
    int x, y;
  };
  for (const Place& edge : {Place{280, 57}, Place{280, 87}, Place{155, 118}, Place{155, 148},
                            Place{368, 193}, Place{263, 193}}) {
    const unsigned without = user_.PixelAt(kLeft + edge.x, kTop + edge.y);
    user_.Key("Tab");
    EXPECT_TRUE(user_.WaitForChange(kLeft + edge.x, kTop + edge.y, without)) << edge.y;
  }
}

// Full blocks: any point of them has the text's colour.
std::string Blocks(int count) {
  std::string text;
  for (int i = 0; i < count; ++i) text += "█";
  return text;
}

// With the pointer on its place and by F1.
TEST_F(Controls, TextThatIsCutEndsInAnEllipsisAndIsShownWhole) {
  display::Window label = Dialog({Field(1, ControlKind::kEdit)}, 1);
  label.controls[FieldIndex(1) - 1].text = Blocks(99);
  const display::Window popup = Dialog({PopupField(1, {Blocks(99), Blocks(98)})}, 1);
  display::Window list = ListDialog(false);
  list.controls[kListIndex].rows = {"Row", Blocks(99)};
  struct Case {
    const display::Window& dialog;
    const char* opened_by;  // keys
    const char* keys;       // and then
    int y, left, right;     // where the text is, and where its ellipsis
  };
  for (const auto& [dialog, opened_by, keys, y, left, right] :
       {Case{label, "", "F1", 67, 30, 138}, Case{popup, "", "ctrl+F1", 67, 200, 388},
        Case{popup, "space", "Down shift+F1", 110, 200, 740},
        Case{list, "", "Down Down F1", 124, 30, 394}}) {
    const auto is_text = [this, y = kTop + y](int x) {
      return user_.PixelAt(kLeft + x, y) < 0x404040;
    };
    Open(dialog);
    if (*opened_by != '\0') user_.Key(opened_by);
    EXPECT_TRUE(WaitFor([&, left = left, right = right] {
      return is_text(left) && !is_text(right);
    })) << y;
    const auto alone = VisibleWindows();
    OutputOf("xdotool mousemove " + std::to_string(kLeft + left) + " " + std::to_string(kTop + y));
    EXPECT_TRUE(WaitFor([&] { return VisibleWindows() > alone; })) << y << " by the pointer";
    OutputOf("xdotool mousemove 0 0");
    EXPECT_TRUE(WaitFor([&] { return VisibleWindows() == alone; })) << y;
    user_.Key(keys);
    EXPECT_TRUE(WaitFor([&] { return VisibleWindows() > alone; })) << y << " by keys";
    display_.Close();
  }
}

TEST_F(Controls, PopupIsChosenFromClosedAndOpen) {
  display::Window dialog = Dialog({PopupField(1, {"Red", "Green", "Blue"}), PopupField(2, {})}, 1);
  Control& popup = dialog.controls[FieldIndex(1)];
  popup.min = popup.max = 1;  // says what is shown, not what can be chosen
  Open(dialog);
  EXPECT_EQ(AfterKey("Down"), "choose 1 2");
  EXPECT_EQ(AfterKey("Return"), "return");
  EXPECT_EQ(AfterKey("space Down Return"), "choose 1 3");
  EXPECT_EQ(AfterKey("space Return"), "choose 1 3");  // the same again is a choice, too
  // The menu's Escape is not reported. A server that is busy gives two presses in a row one time,
  // and then the second repeats the first, so that comes when the menu has gone.
  const auto alone = VisibleWindows();
  user_.Key("space");
  EXPECT_TRUE(WaitFor([&] { return VisibleWindows() > alone; }));
  user_.Key("Escape");
  EXPECT_TRUE(WaitFor([&] { return VisibleWindows() == alone; }));
  EXPECT_EQ(AfterKey("Escape"), "escape");
  EXPECT_EQ(AfterKey("Return"), "return");
  EXPECT_EQ(AfterKey("Tab Down space Return"), "return");  // an empty menu
}

TEST_F(Controls, LongMenuShowsAllThatTheScreenHasRoomForAndTheWheelChoosesNothing) {
  std::vector<std::string> items(30, "Item");
  Open(Dialog({PopupField(1, items)}, 1));
  OutputOf("xdotool mousemove " + std::to_string(kLeft + 280) + " " + std::to_string(kTop + 67) +
           " click 5 click 4");
  const unsigned behind = user_.PixelAt(kLeft + 160, kTop + 600);
  user_.Key("space");
  EXPECT_TRUE(user_.WaitForChange(kLeft + 160, kTop + 600, behind));
  EXPECT_EQ(AfterKey("End Return"), "choose 1 30") << "and nothing before";
}

TEST_F(Controls, PopupIsSearchedByAllThatIsTyped) {
  Open(Dialog({PopupField(1, {"Ann", "New Delhi", "New York", "Paris"})}, 1));
  user_.Type("New Y");
  EXPECT_EQ(Next(), "choose 1 2");
  std::string last;
  while (last != "choose 1 3") last = Next();  // each letter chooses, the same item as well
  const auto alone = VisibleWindows();
  EXPECT_EQ(AfterKey("Return"), "return");
  OutputOf("sleep 1.1");  // the search is over
  user_.Key("space");
  EXPECT_TRUE(WaitFor([&] { return VisibleWindows() > alone; }));
  user_.Type("New D");
  EXPECT_EQ(AfterKey("Return"), "choose 1 2");
}

TEST_F(Controls, FocusStaysWhereItIsUntilItIsNeeded) {
  Open(Dialog({Field(1, ControlKind::kEdit, "preset"), Field(2, ControlKind::kEdit)}, 0));
  user_.Click(kLeft + 30, kTop + 170);  // nothing is there
  user_.Type("alt");
  user_.Key("alt+x");
  user_.Click(kLeft + 30, kTop + 170);
  user_.Type("ered");
  user_.Click(kLeft + 60, kTop + 97);  // the second label
  user_.Type("b");
  user_.Key("Return");
  EXPECT_EQ(Next(), "enter 1 altered") << "over the selected preset";
  EXPECT_EQ(Next(), "enter 2 b");
  EXPECT_EQ(Next(), "return");
}

TEST_F(Controls, TogglesReportClicksAndShowWhatTheHostSays) {
  display::Window dialog = Dialog({Field(1, ControlKind::kCheckBox), Field(2, ControlKind::kRadio),
                                   Field(3, ControlKind::kRadio)},
                                  1);
  for (const int radio : {2, 3}) dialog.controls[FieldIndex(radio)].value = 1;
  Open(dialog);
  for (const int radio : {94, 124}) {  // both, which no group of Qt's would allow
    EXPECT_EQ(user_.PixelAt(kLeft + 150, kTop + radio), 0x308cc6U);
  }
  const unsigned off = user_.PixelAt(kLeft + 150, kTop + 64);
  EXPECT_EQ(AfterKey("space"), "click 1");
  EXPECT_EQ(AfterClick(155, 67), "click 1");
  EXPECT_EQ(AfterClick(155, 97), "click 2");  // it is on and stays on
  EXPECT_EQ(AfterClick(60, 67), "click 1");   // its label
  user_.Click(kLeft + 30, kTop + 170);        // nothing is there
  EXPECT_EQ(user_.PixelAt(kLeft + 150, kTop + 64), off);

  dialog.controls[FieldIndex(1)].value = 1;
  display_.Change(FieldIndex(1), dialog.controls[FieldIndex(1)]);
  EXPECT_TRUE(user_.WaitForChange(kLeft + 150, kTop + 64, off));
}

TEST_F(Controls, ListReportsRowsByPointer) {
  Open(ListDialog(true));
  EXPECT_EQ(AfterClick(5, 108), "row 1 5");
  EXPECT_EQ(AfterClick(402, 124), "row 2 402");
  EXPECT_EQ(AfterClick(50, 140, "ctrl"), "row+ 3 50");
  EXPECT_EQ(AfterClick(50, 172, "shift"), "row- 5 50");
  for (const int beside : {4, 403, 419}) user_.Click(kLeft + beside, kTop + 130);
  EXPECT_EQ(AfterClick(60, 108), "row 1 60");  // and no action for those beside the cells
  EXPECT_EQ(AfterClick(60, 108), "row 1 60");  // the second click of a double click
}

TEST_F(Controls, ListReportsRowsByKeys) {
  Open(ListDialog(true));
  EXPECT_EQ(AfterKey("Tab Down"), "row 1");
  EXPECT_EQ(AfterKey("Down"), "row 2");
  EXPECT_EQ(AfterKey("shift+Down"), "row- 3");
  EXPECT_EQ(AfterKey("space"), "row 3");
  EXPECT_EQ(AfterKey("End"), "row 30");
  EXPECT_EQ(AfterKey("Down Home"), "row 1");  // beyond the last row nothing changes
  EXPECT_EQ(AfterKey("Next"), "row 11");
  EXPECT_EQ(AfterKey("Prior"), "row 1");
  EXPECT_EQ(AfterKey("Return"), "return");
}

TEST_F(Controls, ListIsUsedInFullByKeysAndByDragging) {
  display::Window dialog = ListDialog(true);
  dialog.controls[kListIndex].rows = std::vector<std::string>(30);
  const std::vector<std::string> lines{"Ann", "New Delhi", "New York", "New Zealand"};
  std::copy(lines.begin(), lines.end(), dialog.controls[kListIndex].rows->begin());
  Open(dialog);
  EXPECT_EQ(AfterKey("Down"), "row 1") << "it is ready when it opens";
  EXPECT_EQ(AfterKey("ctrl+Down ctrl+Down ctrl+space"), "row+ 3");
  EXPECT_EQ(AfterKey("shift+End"), "row- 4") << "the last line, not the last row";
  EXPECT_EQ(AfterKey("Down Home"), "row 1");
  EXPECT_EQ(AfterKey("ctrl+a"), "row 4") << "row 1 again could close the dialog";
  EXPECT_EQ(Next(), "row- 1");
  user_.Type("New Y");
  EXPECT_EQ(Next(), "row 2");
  EXPECT_EQ(Next(), "row 3");
  EXPECT_EQ(AfterKey("Up Down space"), "row 2") << "which ends the search";
  EXPECT_EQ(Next(), "row 3");
  EXPECT_EQ(Next(), "row 3");
  OutputOf("xdotool mousemove " + std::to_string(kLeft + 50) + " " + std::to_string(kTop + 124) +
           " mousedown 1 mousemove_relative 0 16");
  EXPECT_EQ(Next(), "row 2 50");
  EXPECT_EQ(Next(), "row- 3");
  OutputOf("xdotool mousemove_relative 0 100 mouseup 1");
  EXPECT_EQ(Next(), "row- 4") << "below it there is no line";
  const unsigned free = user_.PixelAt(kLeft + 200, kTop + 220);
  EXPECT_EQ(AfterClick(60, 220), "row 8 60") << "an empty row is the pointer's";
  dialog.controls[kListIndex].selected = {8};
  display_.Change(kListIndex, dialog.controls[kListIndex]);
  EXPECT_TRUE(user_.WaitForChange(kLeft + 200, kTop + 220, free));
}

TEST_F(Controls, ListShowsTheHostsSelection) {
  display::Window dialog = ListDialog(true);
  Control& list = dialog.controls[kListIndex];
  list.rows->at(0) = list.rows->at(1) = Blocks(4);
  list.selected = {2};
  Open(dialog);
  EXPECT_EQ(user_.PixelAt(kLeft + 20, kTop + 108), 0x000000U);
  EXPECT_EQ(user_.PixelAt(kLeft + 20, kTop + 124), 0xffffffU) << "the text of a selected row";
  const unsigned free = user_.PixelAt(kLeft + 200, kTop + 108);
  const unsigned selected = user_.PixelAt(kLeft + 200, kTop + 124);
  EXPECT_NE(selected, free);
  EXPECT_EQ(AfterClick(200, 156), "row 4");
  list.selected = {1, 3};
  display_.Change(kListIndex, list);
  EXPECT_TRUE(user_.WaitForChange(kLeft + 200, kTop + 108, free));
  EXPECT_TRUE(user_.WaitForChange(kLeft + 200, kTop + 124, selected));
  EXPECT_TRUE(user_.WaitForChange(kLeft + 200, kTop + 140, free));
}

TEST_F(Controls, DisabledButtonIsPassedOver) {
  display::Window dialog = Dialog({}, 0);
  dialog.controls[1].enabled = false;
  Open(dialog);
  user_.Click(kLeft + 360, kTop + 204);
  EXPECT_EQ(AfterKey("Tab space"), "press 2");
  EXPECT_EQ(AfterKey("Tab space"), "press 2");
  dialog.controls[1].enabled = true;
  const unsigned disabled = user_.PixelAt(kLeft + 330, kTop + 200);
  display_.Change(1, dialog.controls[1]);
  ASSERT_TRUE(user_.WaitForChange(kLeft + 330, kTop + 200, disabled));
  EXPECT_EQ(AfterClick(360, 204), "press 1");
}

TEST_F(Controls, TabGoesThroughFieldsThenButtonsAndWraps) {
  Open(Dialog({Field(1, ControlKind::kEdit), Field(2, ControlKind::kCheckBox)}, 0));
  EXPECT_EQ(AfterKey("Return"), "return");  // nobody has the focus
  EXPECT_EQ(AfterKey("Escape"), "escape");
  user_.Key("Tab");
  user_.Type("a");
  EXPECT_EQ(AfterKey("Tab space"), "enter 1 a");
  EXPECT_EQ(Next(), "click 2");
  EXPECT_EQ(AfterKey("Tab space"), "press 1");
  EXPECT_EQ(AfterKey("Tab space"), "press 2");
  EXPECT_EQ(AfterKey("Return"), "return");  // for the default button, wherever the focus is
  user_.Key("Tab End b");
  EXPECT_EQ(AfterKey("shift+Tab space"), "enter 1 ab");
  EXPECT_EQ(Next(), "press 2");
}

TEST_F(Controls, ArrowsBetweenButtonsGoTheWayTheyPoint) {
  Open(Dialog({Field(1, ControlKind::kEdit)}, 0));
  user_.Key("Tab Tab");
  EXPECT_EQ(AfterKey("Left space"), "press 2");
  EXPECT_EQ(AfterKey("Left Up Down space"), "press 2");
  EXPECT_EQ(AfterKey("Right space"), "press 1");
  EXPECT_EQ(AfterKey("Right space"), "press 1");
}

TEST_F(Controls, AlertAnswersKeysAndItsButtons) {
  Open(display::Alert{2, "Delete?", "For good.", "Delete", "Cancel", "Other"});
  EXPECT_EQ(AfterKey("Return"), "return");
  EXPECT_EQ(AfterKey("Escape"), "escape");
  EXPECT_EQ(AfterKey("space"), "press 1");
  EXPECT_EQ(AfterKey("Tab space"), "press 2");
  EXPECT_EQ(AfterKey("Tab space"), "press 3");
  user_.Key("ctrl+c");
  EXPECT_EQ(OutputOf("xclip -selection clipboard -o"), "Delete?\n\nFor good.");
}

// The luminances of 0xRRGGBB colours, as the Web's guidelines for contrast count them.
double Luminance(unsigned colour) {
  const auto part = [colour](unsigned shift) {
    return std::pow(((colour >> shift) & 0xffU) / 255.0, 2.2);
  };
  return 0.2126 * part(16) + 0.7152 * part(8) + 0.0722 * part(0);
}

TEST_F(Controls, DisabledTextCanBeReadAndIsToldFromOthers) {
  for (const char* theme : {"Adwaita", "Adwaita-dark", "HighContrast", "HighContrastInverse"}) {
    const testing_tools::ChangedVariable colours("GTK_THEME", theme);
    display::DisplayProcess display("tarvo-desktop");
    display::Window dialog = Dialog({}, 0, theme);
    dialog.controls[0].text = Blocks(4);
    ASSERT_TRUE(display.Open(dialog));
    ASSERT_NE(user_.ActiveWindow(theme), 0U);
    const auto window = [this] { return user_.PixelAt(kLeft + 1, kTop + 1); };
    const auto text = [this] { return user_.PixelAt(kLeft + 20, kTop + 14); };
    EXPECT_TRUE(WaitFor([&] { return text() != window(); })) << theme;
    const unsigned enabled = text();
    dialog.controls[0].enabled = false;
    display.Change(0, dialog.controls[0]);
    EXPECT_TRUE(WaitFor([&] { return text() != enabled; })) << theme;
    const auto [darker, lighter] = std::minmax({Luminance(window()), Luminance(text())});
    EXPECT_GE((lighter + 0.05) / (darker + 0.05), 3) << theme;
  }
}

TEST_F(Controls, AlertTallerThanTheScreenIsScrolledByKeys) {
  std::string explanation(100, '\r');
  for (int line = 0; line < 50; ++line) explanation += Blocks(99) + '\r';
  Open(display::Alert{1, "Tall", explanation, "OK", "Cancel", {}});
  EXPECT_TRUE(user_.WaitForChange(640, 400, 0)) << "it is painted, and no text is there";
  user_.Key("Tab Tab");
  user_.Key("Next Next Next");
  EXPECT_TRUE(WaitFor([&] { return user_.PixelAt(640, 400) == 0; }));
  EXPECT_EQ(AfterKey("Tab space"), "press 1") << "the buttons are on the screen";
}

}  // namespace
}  // namespace desktop_test
