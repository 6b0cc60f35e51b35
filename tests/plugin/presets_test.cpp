#include "tests/support/plugin_host.h"

namespace {

class Presets : public PluginHost {};

TEST_F(Presets, CaptionIsTheWholeParameterAndStays) {
  EXPECT_EQ(Call("TarvoSetCaption", "Orders | 2024"), "Orders | 2024");
  EXPECT_EQ(Call("TarvoSetCaption", ""), "$$002$$");
  for (const char* function : {"TarvoDialog", "TarvoCustomDialog", "TarvoDoListBox"}) {
    Call(function, "0|m", "press 1");
    EXPECT_EQ(Opened().at("title"), "Orders | 2024") << function;
  }
}

TEST_F(Presets, PreEnteredTextsServeOneDialog) {
  EXPECT_EQ(Call("TarvoPreEnterText", "a|b|c|d|e"), "a|b|c|d|e");
  for (const char* function : {"TarvoDialog", "TarvoCustomDialog"}) {
    EXPECT_EQ(Call("TarvoPreEnterText", "|x"), "|x");
    EXPECT_EQ(Call("TarvoPreEnterText", std::string(1025, 'x')), "$$002$$");
    // Neither an alert nor a list uses them up.
    Call("TarvoAlert", "1|m", "press 1");
    Call("TarvoDoListBox", "m", "press 1");
    EXPECT_EQ(Call(function, "4|m", "press 1"), "1||x||");
    EXPECT_EQ(Call(function, "4|m", "press 1"), "1||||");
  }
}

TEST_F(Presets, PreEnteredTextsMeanWhatTheKindMakesOfThem) {
  Call("TarvoPopUps", "a\rb\ra|a");
  Call("TarvoSetCustomControls", "2|3|3|4");
  Call("TarvoPreEnterText", "a|1|01|1");
  EXPECT_EQ(Call("TarvoCustomDialog", "4|m", "press 1"), "1|a|1|0|1");
  EXPECT_EQ(Field(1).at("value"), 3) << "of equal items the last";
  EXPECT_EQ(Field(1).at("min"), 3);
  Call("TarvoPreEnterText", "b");
  EXPECT_EQ(Call("TarvoCustomDialog", "1|m", "press 1"), "1|b|||");
  Call("TarvoPreEnterText", "A|yes||0");
  EXPECT_EQ(Call("TarvoCustomDialog", "4|m", "press 1"), "1|a|0|0|0");
  EXPECT_EQ(Field(1).at("value"), 1);
}

// Where the content of the next standard dialog stands.
class Position : public PluginHost {
 protected:
  std::string Place() {
    Call("TarvoDialog", "1|m", "press 1");
    return Opened().at("content").dump();
  }

  static constexpr const char* kCentred = "[476,747,603,1172]";
};

TEST_F(Position, PlacesTheNextDialogOnly) {
  EXPECT_EQ(Call("TarvoPosition", "100|200|300"), "0");
  Call("TarvoDoListBox", "m", "press 1");
  EXPECT_EQ(Opened().at("content").dump(), "[377,747,702,1172]") << "a list is always centred";
  EXPECT_EQ(Place(), "[200,100,327,525]");
  EXPECT_EQ(Place(), kCentred);
  Call("TarvoPosition", "7");
  EXPECT_EQ(Place(), kCentred) << "neither coordinate is left of the one before";
  Call("TarvoPosition", "0|0");
  EXPECT_EQ(Place(), "[0,0,127,425]");
}

TEST_F(Position, NegativeCoordinatesNeitherSetNorTakeBack) {
  EXPECT_EQ(Call("TarvoPosition", "100"), "0");
  EXPECT_EQ(Place(), kCentred);
  Call("TarvoPosition", "-1|5");
  EXPECT_EQ(Place(), kCentred);
  Call("TarvoPosition", "100|200");
  Call("TarvoPosition", "-1|-1");
  EXPECT_EQ(Place(), "[-1,-1,126,424]");
}

TEST_F(Position, WaitsForAWindowThatTakesIt) {
  Call("TarvoPosition", "100|200");
  EXPECT_EQ(Call("TarvoDialog", "5|no menus", ""), "$$001$$");
  EXPECT_EQ(Place(), "[200,100,327,525]");
  // A coordinate alone places nothing, and only a standard dialog forgets it.
  Call("TarvoPosition", "-1|200");
  Call("TarvoCustomDialog", "1|m", "press 1");
  EXPECT_EQ(Opened().at("content").dump(), kCentred);
  Call("TarvoAlert", "1|m", "press 1");
  Call("TarvoDoListBox", "m", "press 1");
  Call("TarvoPosition", "100");
  EXPECT_EQ(Place(), "[200,100,327,525]");
  Call("TarvoPosition", "-1|200");
  EXPECT_EQ(Place(), kCentred);
  Call("TarvoPosition", "100");
  EXPECT_EQ(Place(), kCentred);
}

TEST_F(Position, OnlySixteenBitsCount) {
  Call("TarvoPosition", "65537|131072");
  EXPECT_EQ(Place(), "[0,1,127,426]");
  Call("TarvoPosition", "32000|32000");
  EXPECT_EQ(Place(), "[32000,32000,32127,32425]");
}

TEST_F(Position, RefusesItemsOf256Characters) {
  const std::string longest = std::string(254, '0') + "5";
  EXPECT_EQ(Call("TarvoPosition", longest + "|" + longest), "0");
  EXPECT_EQ(Place(), "[5,5,132,430]");
  EXPECT_EQ(Call("TarvoPosition", "0" + longest + "|1"), "$$002$$");
  EXPECT_EQ(Call("TarvoPosition", "7|0" + longest), "$$002$$");
  // The left edge has been set by then.
  EXPECT_EQ(Call("TarvoPosition", "|9"), "0");
  EXPECT_EQ(Place(), "[9,0,136,425]");
}

TEST_F(Presets, FocusIsOnTheFieldThatIsNumbered) {
  struct {
    const char* focus;
    const char* fields;
    const char* focused;
  } rows[] = {{"2", "3", "2"}, {"3", "2", ""}, {"0", "2", ""},  {"0", "1", "1"},
              {"4", "4", "4"}, {"5", "4", ""}, {"-1", "3", ""}, {"9", "1", "1"}};
  for (const auto& row : rows) {
    EXPECT_EQ(Call("TarvoSetFocus", row.focus), row.focus);
    Call("TarvoDialog", std::string(row.fields) + "|m", "press 1");
    EXPECT_EQ(FocusedFields(), row.focused) << row.focus << " of " << row.fields;
  }
}

TEST_F(Presets, FocusIsResetByDialogsWithFields) {
  const auto focus_after = [this](const char* first) {
    Call("TarvoDialog", first, "press 1");
    Call("TarvoDialog", "3|m", "press 1");
    return FocusedFields();
  };
  EXPECT_EQ(focus_after("1|m"), "1");
  EXPECT_EQ(focus_after("2|m"), "") << "after two fields there is none";
  EXPECT_EQ(focus_after("3|m"), "1");
  EXPECT_EQ(focus_after("4|m"), "1");
  Call("TarvoSetFocus", "2");
  EXPECT_EQ(focus_after("0|m"), "2") << "a message uses no focus";
}

TEST_F(Presets, FocusGoesThroughInputsOfEveryKind) {
  Call("TarvoSetCustomControls", "3|7|2|4");
  Call("TarvoSetFocus", "2");
  Call("TarvoCustomDialog", "4|m", "press 1");
  EXPECT_EQ(FocusedFields(), "3") << "field 2 has no input";
  Call("TarvoSetFocus", "4");
  Call("TarvoCustomDialog", "4|m", "press 1");
  EXPECT_EQ(FocusedFields(), "1") << "the fourth of three inputs is the first again";
}

TEST_F(Presets, EscapeServesUntilAStandardDialog) {
  EXPECT_EQ(Call("TarvoAllowEscape", "1"), "1");
  EXPECT_EQ(Call("TarvoDoListBox", "m", "escape"), "E");
  EXPECT_EQ(Call("TarvoCustomDialog", "1|m", "escape"), "E");
  EXPECT_EQ(Call("TarvoDialog", "1|m", "escape"), "E");
  EXPECT_EQ(Call("TarvoCustomDialog", "1|m", "escape; press 1"), "1||||");
  Call("TarvoAllowEscape", "1");
  EXPECT_EQ(Call("TarvoAllowEscape", "0"), "0");
  EXPECT_EQ(Call("TarvoDoListBox", "m", "escape; press 1"), "1|");
}

TEST_F(Presets, PopUpsCountTheirMenus) {
  struct {
    const char* parameter;
    const char* menus;
    const char* sizes;  // of the menus that the fields have
  } rows[] = {{"Red\rGreen\rBlue|Yes\rNo", "2", "3200"},
              {"|AA\rB", "2", "1200"},
              {"AA\rB|", "1", "2000"},
              {"Maybe", "1", "1000"},
              {"x", "0", "0000"},
              {"\U0001F600", "1", "1000"},  // one character, two units
              {"A\nB", "1", "1000"},
              {"|AA|BB", "3", "1110"},
              {"x|AA", "1", "1000"},
              {"AA||BB", "3", "1110"},
              {"A\r|\r\r", "2", "2300"},
              {"AA|BB|CC|DD|EE", "4", "1111"},
              {"||||AA", "0", "0000"},
              {"|||", "0", "0000"}};
  Call("TarvoSetCustomControls", "2|2|2|2");
  for (const auto& row : rows) {
    EXPECT_EQ(Call("TarvoPopUps", row.parameter), row.menus) << row.parameter;
    Call("TarvoCustomDialog", "4|m", "press 1");
    std::string sizes;
    for (int n = 1; n <= 4; ++n) sizes += std::to_string(Field(n).at("items").size());
    EXPECT_EQ(sizes, row.sizes) << row.parameter;
  }
  EXPECT_EQ(Call("TarvoPopUps", ""), "$$002$$");
}

TEST_F(Presets, FillListBoxCountsItsLines) {
  EXPECT_EQ(Call("TarvoFillListBox", "a\rb\rc"), "3");
  EXPECT_EQ(Call("TarvoFillListBox", "a\rb\rc\r"), "4");
  EXPECT_EQ(Call("TarvoFillListBox", "a|b"), "1");
  EXPECT_EQ(Call("TarvoFillListBox", "a\nb"), "1");
  EXPECT_EQ(Call("TarvoFillListBox", "\r\r"), "3");
  EXPECT_EQ(Call("TarvoFillListBox", ""), "$$002$$");
  EXPECT_EQ(Call("TarvoDoListBox", "m", "row 1; row 3; press 1"), "1|");
}

TEST_F(Presets, FillingAShortListCutsNoRecordedValue) {
  const std::string long_text(3000, 'v');
  Call("TarvoDialog", "1|m", "enter 1 " + long_text + "; press 1");
  Call("TarvoFillListBox", "x");
  EXPECT_EQ(Call("TarvoV1", ""), long_text);
}

}  // namespace
