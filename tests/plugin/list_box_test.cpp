#include <algorithm>

#include "tests/support/plugin_host.h"

namespace {

class ListBox : public PluginHost {
 protected:
  ListBox() { Call("TarvoFillListBox", "Apple\rBanana\rPear\rPlum"); }

  static constexpr const char* kMultiple = "m|OK|Cancel|||||||1";
  static constexpr const char* kSingle = "m|OK|Cancel";
  static constexpr const char* kDoubleClick = "m|OK|Cancel||||1|||1";
  static constexpr const char* kRequired = "m|OK|Cancel|||||1";
};

TEST_F(ListBox, HoldsItsGeometry) {
  Call("TarvoDoListBox", "Choose||B|C|D", "press 1");
  std::string layout;
  for (const auto& control : Opened().at("controls")) {
    layout += control.at("kind").get<std::string>() + " " +
              control.at("command").get<std::string>() + " " + control.at("id").dump() + " " +
              control.at("rect").dump() + " " + control.at("text").dump() + " " +
              control.at("size").dump() + "\n";
  }
  EXPECT_EQ(layout,
            "static ABCB 1 [5,5,90,420] \"Choose\" 1\n"
            "list ABCC 1 [100,5,278,420] null 1\n"
            "button ABCD 200 [290,323,322,413] \"OK\" 0\n"
            "button ABCE 201 [290,218,323,308] \"B\" 0\n"
            "button ABCF 202 [290,113,323,203] \"C\" 0\n"
            "button ABCG 203 [290,8,323,98] \"D\" 0\n"
            "button ACAN 999 [500,500,510,510] \"\" null\n");
  EXPECT_EQ(Opened().at("content").dump(), "[377,747,702,1172]");
  const auto& rows = Opened().at("controls").at(1).at("rows");
  EXPECT_EQ(rows.size(), 30U);
  EXPECT_EQ(rows.at(3), "Plum");
  EXPECT_EQ(rows.at(4), "");
}

TEST_F(ListBox, AnswersTheChosenRowsInRowOrder) {
  EXPECT_EQ(Call("TarvoDoListBox", kMultiple, "row 3; row+ 1; press 2"), "2|Apple|Pear");
  EXPECT_EQ(Call("TarvoLastValue", ""), "2|Apple|Pear|||");
  EXPECT_EQ(Call("TarvoV1", ""), "Apple|Pear");
  EXPECT_EQ(Call("TarvoDoListBox", kMultiple, "press 1"), "1|");
  EXPECT_EQ(Call("TarvoDoListBox", kMultiple, "row 2; row- 4; row+ 3; return"), "1|Banana|Plum");
  EXPECT_EQ(Call("TarvoDoListBox", kMultiple, "row 3; row- 1; row- 4; return"), "1|Pear|Plum");
  EXPECT_EQ(Call("TarvoDoListBox", kMultiple, "row 2; row 1; return"), "1|Apple");
  EXPECT_EQ(Call("TarvoDoListBox", kMultiple, "row- 2; return"), "1|Banana");
}

TEST_F(ListBox, SelectsOneRowAloneWhereOnlyOneMayBe) {
  for (const char* click : {"row 3", "row+ 3", "row- 3"}) {
    EXPECT_EQ(Call("TarvoDoListBox", kSingle, std::string("row 1; ") + click + "; press 1"),
              "1|Pear");
  }
}

TEST_F(ListBox, EmptyRowsAreJoinedWithoutSeparatorInFront) {
  Call("TarvoFillListBox", "\rone\r\rtwo");
  EXPECT_EQ(Call("TarvoDoListBox", kMultiple, "row 1; row- 6; press 1"), "1|one||two||");
  Call("TarvoFillListBox", "|\ra|b");
  EXPECT_EQ(Call("TarvoDoListBox", kMultiple, "row 1; row- 2; press 1"), "1|||a|b");
}

TEST_F(ListBox, OffersThirtyRows) {
  std::string lines;
  for (int i = 1; i <= 40; ++i) lines += (i > 1 ? "\r" : "") + std::to_string(i);
  EXPECT_EQ(Call("TarvoFillListBox", lines), "40");
  EXPECT_EQ(Call("TarvoDoListBox", kSingle, "row 30; press 1"), "1|30");
  Answer("row 31");
  Call("TarvoDoListBox", kSingle);
  EXPECT_EQ(dialogs_->failure()->reason, "\"row 31\": there is no list row 31");
}

TEST_F(ListBox, ASecondClickOnARowInSuccessionChoosesIt) {
  EXPECT_EQ(Call("TarvoDoListBox", kDoubleClick, "row 3; row+ 1; row 4; row 4"), "1|Plum");
  EXPECT_EQ(Call("TarvoDoListBox", kDoubleClick, "row 4; row 3; row 4; press 2"), "2|Plum");
  EXPECT_EQ(Call("TarvoDoListBox", kDoubleClick, "row 1; press 2"), "2|Apple");
  EXPECT_EQ(Call("TarvoDoListBox", kDoubleClick, "row 1; row 1"), "1|Apple")
      << "a click in the last dialog is forgotten";
  EXPECT_EQ(Call("TarvoDoListBox", kMultiple, "row 1; row 1; press 2"), "2|Apple");
  EXPECT_EQ(Call("TarvoV2", ""), "");
}

TEST_F(ListBox, OnlyClicksOnTheCellsCount) {
  struct {
    const char* x;
    bool counts;
  } rows[] = {{"4", false},           {"5", true},           {"402", true},
              {"403", false},         {"-1", false},         {"0", false},
              {"419", false},         {"100000", false},     {"65741", false},
              {"-2147483648", false}, {"99999999999", false}};
  for (const auto& row : rows) {
    const std::string click = std::string("row 2 ") + row.x + "; ";
    EXPECT_EQ(Call("TarvoDoListBox", kDoubleClick, click + click + "press 2"),
              row.counts ? "1|Banana" : "2|Banana")
        << row.x;
    EXPECT_EQ(Call("TarvoDoListBox", kRequired, click + "press 1; press 2"),
              row.counts ? "1|Banana" : "2|Banana")
        << row.x;
  }
}

TEST_F(ListBox, ButtonOneWaitsForAChoiceWhereOneIsRequired) {
  EXPECT_EQ(Call("TarvoDoListBox", kRequired, "press 1; return; row 3; row 2; return"), "1|Banana");
  EXPECT_FALSE(Control(200).at("enabled"));
  EXPECT_EQ(
      std::ranges::count(dialogs_->changes, 2U, [](const auto& change) { return change.first; }), 1)
      << "the display hears once that the button is enabled";
  EXPECT_EQ(Call("TarvoDoListBox", kRequired, "press 2"), "2|");
  Call("TarvoDoListBox", kSingle, "press 1");
  EXPECT_TRUE(Control(200).at("enabled"));
}

TEST_F(ListBox, FlagsAreNumbersAbove0) {
  for (const char* flag : {"0", "", "x", "-1"}) {
    EXPECT_EQ(Call("TarvoDoListBox", std::string("m|A|B||||") + flag + "|" + flag + "||" + flag,
                   "row 1; row+ 2; row 2; press 1"),
              "1|Banana")
        << flag;
  }
  EXPECT_EQ(Call("TarvoDoListBox", "m|A|B|||any||5|any|7|more", "row 1; row+ 2; press 1"),
            "1|Apple|Banana");
}

TEST_F(ListBox, CutsACellAt2048BytesBetweenCharacters) {
  const std::string fits(2048, 'x');
  const std::string straddles = std::string(2047, 'y') + "é";
  Call("TarvoFillListBox", fits + "\r" + fits + "z\r" + straddles);
  EXPECT_EQ(Call("TarvoDoListBox", kSingle, "row 1; press 1"), "1|" + fits);
  EXPECT_EQ(Call("TarvoDoListBox", kSingle, "row 2; press 1"), "1|" + fits);
  EXPECT_EQ(Call("TarvoDoListBox", kDoubleClick, "row 3; row 3"), "1|" + std::string(2047, 'y'));
  EXPECT_EQ(Call("TarvoDoListBox", kMultiple, "row 1; row- 2; press 1"), "1|" + fits + "|" + fits);
}

TEST_F(ListBox, WorksWithoutLines) {
  Send(kFMXT_Shutdown);
  Initialise(PLUGIN_BUNDLE);
  EXPECT_EQ(Call("TarvoDoListBox", kMultiple, "press 1"), "1|");
  EXPECT_EQ(Call("TarvoDoListBox", kMultiple, "row 5; row+ 9; press 1"), "1|");
}

TEST_F(ListBox, LeavesStandardDialogsAlone) {
  Call("TarvoDialog", "1|message|A||||label", "enter 1 x; press 1");
  Call("TarvoDoListBox", kSingle, "row 1; press 1");
  EXPECT_EQ(Call("TarvoDialog", "1|m", "enter 1 y; press 1"), "1|y|||");
}

}  // namespace
