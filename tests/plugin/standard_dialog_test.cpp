#include "plugin/state/dialog_state.h"
#include "plugin/windows/standard_window.h"
#include "tests/support/plugin_host.h"

namespace {

using display::Json;

class StandardDialog : public PluginHost {};

TEST_F(StandardDialog, AnswersTheButtonAndWhatWasTyped) {
  EXPECT_EQ(Call("TarvoDialog", "2|Enter the name|OK|Cancel|||First|Last|||",
                 "enter 1 Ann; enter 2 Lee; press 2"),
            "2|Ann|Lee||");
  EXPECT_EQ(Call("TarvoLastValue", ""), "2|Ann|Lee||");
}

// Message, buttons 1 to 4, cancel control, then label and input of each field, in order of
// creation.
std::string Layout(const Json& window) {
  std::string layout;
  for (const Json& control : window.at("controls")) {
    layout += control.at("kind").get<std::string>() + " " +
              control.at("command").get<std::string>() + " " + control.at("id").dump() + " " +
              control.at("rect").dump() + "\n";
  }
  return layout;
}

struct Row {
  int fields;
  const char* content;
  const char* message;
  const char* buttons[4];
};

TEST_F(StandardDialog, HoldsItsGeometryForEveryNumberOfFields) {
  const Row rows[] = {
      {0,
       "[427,747,652,1172]",
       "[5,5,190,420]",
       {"[188,323,220,413]", "[188,218,220,308]", "[188,113,220,203]", "[188,8,220,98]"}},
      {1,
       "[476,747,603,1172]",
       "[5,5,55,420]",
       {"[90,323,122,413]", "[90,218,122,308]", "[90,113,122,203]", "[90,8,122,98]"}},
      {2,
       "[464,747,616,1172]",
       "[5,5,55,420]",
       {"[118,323,150,413]", "[118,218,150,308]", "[118,113,150,203]", "[118,8,150,98]"}},
      {3,
       "[446,747,633,1172]",
       "[5,5,55,420]",
       {"[150,323,182,413]", "[150,218,182,308]", "[150,113,182,203]", "[150,8,182,98]"}},
      {4,
       "[427,747,652,1172]",
       "[5,5,55,420]",
       {"[188,323,220,413]", "[188,218,220,308]", "[188,113,220,203]", "[188,8,220,98]"}},
  };
  const char* fields[] = {"static ABCH 204 [60,5,75,140]\nedit ABCI 205 [60,150,75,410]\n",
                          "static ABCJ 206 [90,5,105,140]\nedit ABCK 207 [90,150,105,410]\n",
                          "static ABCL 208 [120,5,135,140]\nedit ABCM 209 [120,150,135,410]\n",
                          "static ABCN 210 [150,5,165,140]\nedit ABCO 211 [150,150,165,410]\n"};
  for (const Row& row : rows) {
    Call("TarvoDialog", std::to_string(row.fields) + "|Message|A|B|C|D|1|2|3|4", "press 1");
    std::string expected = std::string("static ABCC 1 ") + row.message + "\n";
    const char* commands[] = {"ABCD 200 ", "ABCE 201 ", "ABCF 202 ", "ABCG 203 "};
    for (int i = 0; i < 4; ++i) {
      expected += std::string("button ") + commands[i] + row.buttons[i] + "\n";
    }
    expected += "button ACAN 999 [500,500,510,510]\n";
    for (int i = 0; i < row.fields; ++i) expected += fields[i];
    EXPECT_EQ(Layout(Opened()), expected) << row.fields;
    EXPECT_EQ(Opened().at("content").dump(), row.content) << row.fields;
  }
}

TEST_F(StandardDialog, DescribesEachControlWhole) {
  Call("TarvoDialog", "1|Message||No|||Name", "press 2");
  EXPECT_EQ(
      Control(1).dump(),
      R"({"kind":"static","command":"ABCC","id":1,"rect":[5,5,55,420],"text":"Message",)"
      R"("value":null,"min":null,"max":null,"items":null,"rows":null,"visible":true,)"
      R"("enabled":true,"default":false,"cancel":false,"focused":false,"size":1,"font":1,"menu":null,"cell":null})");
  EXPECT_EQ(
      Control(200).dump(),
      R"({"kind":"button","command":"ABCD","id":200,"rect":[90,323,122,413],"text":"OK",)"
      R"("value":null,"min":null,"max":null,"items":null,"rows":null,"visible":true,)"
      R"("enabled":true,"default":true,"cancel":false,"focused":false,"size":0,"font":1,"menu":null,"cell":null})");
  EXPECT_EQ(Control(999).dump(),
            R"({"kind":"button","command":"ACAN","id":999,"rect":[500,500,510,510],"text":"",)"
            R"("value":null,"min":null,"max":null,"items":null,"rows":null,"visible":false,)"
            R"("enabled":true,"default":false,"cancel":true,"focused":false,"size":null,)"
            R"("font":null,"menu":null,"cell":null})");
  EXPECT_EQ(
      Control(204).dump(),
      R"({"kind":"static","command":"ABCH","id":204,"rect":[60,5,75,140],"text":"Name",)"
      R"("value":null,"min":null,"max":null,"items":null,"rows":null,"visible":true,)"
      R"("enabled":true,"default":false,"cancel":false,"focused":false,"size":0,"font":1,"menu":null,"cell":null})");
  EXPECT_EQ(
      Control(205).dump(),
      R"({"kind":"edit","command":"ABCI","id":205,"rect":[60,150,75,410],"text":"",)"
      R"("value":null,"min":null,"max":null,"items":null,"rows":null,"visible":true,)"
      R"("enabled":true,"default":false,"cancel":false,"focused":true,"size":0,"font":1,"menu":null,"cell":null})");
}

TEST_F(StandardDialog, HasTheButtonsThatHaveATextInTheirPlaces) {
  Call("TarvoDialog", "0|Sure?||||Help", "press 4");
  EXPECT_EQ(Control(200).at("text"), "OK");
  EXPECT_EQ(Control(203).at("rect").dump(), "[188,8,220,98]");
  EXPECT_FALSE(HasControl(201));
  EXPECT_FALSE(HasControl(202));
  EXPECT_EQ(Call("TarvoLC", ""), "4");
  Answer("press 3");
  Call("TarvoDialog", "0|Sure?||||Help");
  ASSERT_TRUE(dialogs_->failure());
  EXPECT_EQ(dialogs_->failure()->reason, "\"press 3\": there is no button 3");
}

TEST_F(StandardDialog, TakesItsItemsByPosition) {
  EXPECT_EQ(Call("TarvoDialog", "x", "return"), "1||||");
  EXPECT_EQ(Call("TarvoDialog", "0|Only a message", "press 1"), "1||||");
  EXPECT_EQ(Control(1).at("text"), "Only a message");
  Call("TarvoDialog", "  3rd|m|A||||1|2|3|4|2|ignored|2", "press 1");
  EXPECT_EQ(Field(1).at("kind"), "edit");
  EXPECT_EQ(Field(2).at("kind"), "password");
  EXPECT_EQ(Field(3).at("kind"), "edit");
  EXPECT_EQ(Control(208).at("text"), "3");
  EXPECT_FALSE(HasControl(211));
}

TEST_F(StandardDialog, RecordsAPasswordInClearAndNeverShowsIt) {
  Call("TarvoPreEnterText", "seen|never seen");
  EXPECT_EQ(Call("TarvoDialog", "2|Log in|OK|Quit|||Name|Password|||2",
                 "enter 1 ann; enter 2 s3cret; press 2"),
            "2|ann|s3cret||");
  EXPECT_EQ(Field(1).at("text"), "seen");
  EXPECT_EQ(Field(2).at("text"), "");
  for (const auto& [index, control] : dialogs_->changes) {
    EXPECT_TRUE(control.kind != display::ControlKind::kPassword || control.text == "");
  }
}

TEST_F(StandardDialog, ShowsNoWindowForOtherCountsAndRepeatsTheLastAnswer) {
  for (const char* parameter : {"6|m", "-1|m", "99999999999|m"}) {
    EXPECT_EQ(Call("TarvoDialog", parameter, ""), "||||") << parameter;
  }
  Call("TarvoDialog", "1|m", "enter 1 kept; press 1");
  Call("TarvoPreEnterText", "gone");
  Call("TarvoAllowEscape", "1");
  Call("TarvoPosition", "10|10");
  EXPECT_EQ(Call("TarvoDialog", "6|m", ""), "1|kept|||");
  Call("TarvoDialog", "1|m", "escape; press 1");
  EXPECT_EQ(Field(1).at("text"), "");
  EXPECT_EQ(Opened().at("content").at(0), 476);
}

TEST_F(StandardDialog, PopUpModeTakesTheMenusOfTheFirstFields) {
  EXPECT_EQ(Call("TarvoDialog", "5|m|OK", ""), "$$001$$");
  Call("TarvoPopUps", "red\rgreen\rblue|yes\rno");
  EXPECT_EQ(Call("TarvoDialog", "5|m|OK||||Colour|Sure", "choose 1 3; press 1"), "1|blue|yes||");
  EXPECT_EQ(Field(1).at("kind"), "popup");
  EXPECT_EQ(Field(1).at("rect").dump(), "[60,146,75,413]");
  EXPECT_EQ(Field(1).at("items").dump(), R"(["red","green","blue"])");
  EXPECT_EQ(Field(1).at("text"), nullptr);
  EXPECT_EQ(Field(1).at("min"), 1);
  EXPECT_EQ(Field(1).at("max"), 3);
  EXPECT_EQ(Opened().at("content").at(2), 616);
  // One field may be an edit or a password field instead.
  EXPECT_EQ(Call("TarvoDialog", "5|m|OK||||||||-2", "enter 2 free; press 1"), "1|red|free||");
  EXPECT_EQ(Field(2).at("kind"), "edit");
  Call("TarvoDialog", "5|m|OK||||||||1", "press 1");
  EXPECT_EQ(Field(1).at("kind"), "password");
}

TEST_F(StandardDialog, PopUpModeShowsNoWindowWhereMenusHaveAGap) {
  for (std::int32_t* gap : {&popupctr1, &popupctr2}) {
    Call("TarvoPopUps", "aa|bb|cc");
    *gap = 0;
    EXPECT_EQ(Call("TarvoDialog", "5|m", ""), "||||");
  }
}

TEST_F(StandardDialog, PopUpModeWithoutMenusKeepsThePresets) {
  Call("TarvoPreEnterText", "kept");
  Call("TarvoAllowEscape", "1");
  EXPECT_EQ(Call("TarvoDialog", "5|m", ""), "$$001$$");
  EXPECT_EQ(Call("TarvoDialog", "1|m", "escape"), "E");
  EXPECT_EQ(Field(1).at("text"), "kept");
}

TEST_F(StandardDialog, EscapeCancelsOnlyWhereItMay) {
  EXPECT_EQ(Call("TarvoDialog", "1|m", "enter 1 x; escape; close; press 1"), "1|x|||");
  Call("TarvoAllowEscape", "1");
  EXPECT_EQ(Call("TarvoDialog", "1|m", "enter 1 x; escape"), "E");
  EXPECT_TRUE(Control(999).at("visible"));
  EXPECT_EQ(Call("TarvoLastValue", ""), "E");
  EXPECT_EQ(Call("TarvoV1", ""), "");
  Call("TarvoAllowEscape", "1");
  EXPECT_EQ(Call("TarvoDialog", "1|m", "close"), "E");
}

TEST_F(StandardDialog, TabGoesThroughFieldsThenButtons) {
  Call("TarvoAllowEscape", "1");
  EXPECT_EQ(Call("TarvoDialog", "2|m|A|B", "type a; tab; type b; tab; tab; tab; type c; return"),
            "1|ac|b||");
  // From no focus to the first field.
  EXPECT_EQ(Call("TarvoDialog", "2|m|A|B", "tab; type x; press 2"), "2|x|||");
  Answer("type x");
  Call("TarvoDialog", "0|m");
  EXPECT_EQ(dialogs_->failure()->reason, "\"type x\": no edit field has the focus");
}

TEST_F(StandardDialog, EndsWithoutAnAnswerWhereThereIsNone) {
  Call("TarvoDialog", "1|m", "enter 1 before; press 1");
  Answer("enter 1 lost");
  EXPECT_EQ(Call("TarvoDialog", "1|m"), "1|before|||");
  EXPECT_EQ(dialogs_->failure()->reason, "there is no answer left");
  EXPECT_EQ(dialogs_->closed, 1);
  EXPECT_EQ(dialog1(), eventLoopQuitErr);
  EXPECT_EQ(Call("TarvoDialog", "1|m", "enter 1 after; press 1"), "1|after|||");
  Answer("press 1");
  EXPECT_EQ(dialog0(), noErr);
}

TEST_F(StandardDialog, KeepsNothingOfAClosedDialog) {
  const auto dialog = [this] { Call("TarvoDialog", "4|m|A|B|C|D|1|2|3|4|2", "press 4"); };
  dialog();
  const long carbon_objects = carbon::LiveObjects();
  const CFIndex strings = CFGetLiveObjectCount();
  for (int i = 0; i < 10; ++i) dialog();
  EXPECT_EQ(carbon::LiveObjects(), carbon_objects);
  EXPECT_EQ(CFGetLiveObjectCount(), strings);
}

TEST_F(StandardDialog, TakesAnyTextAsText) {
  const std::string texts[] = {"<b>x</b>", "&File %s &amp;", "\"q\" 'q' \\", "מִלָּה عربى",
                               "日本語 👩‍👩‍👧 é"};
  for (const std::string& text : texts) {
    Call("TarvoPreEnterText", text);
    EXPECT_EQ(Call("TarvoDialog", "1|" + text + "|" + text + "||||" + text, "press 1"),
              "1|" + text + "|||");
    for (const int id : {1, 200, 204}) EXPECT_EQ(Control(id).at("text"), text);
  }
  EXPECT_EQ(Call("TarvoDialog", "1|m", "enter 1 a|b; press 1"), "1|a|b|||");
}

TEST_F(StandardDialog, TakesLongParametersAndAnswers) {
  const std::string long_text(5000, 'x');
  EXPECT_EQ(Call("TarvoDialog", "1|" + long_text, "enter 1 " + long_text + "; press 1"),
            "1|" + long_text + "|||");
  EXPECT_EQ(Control(1).at("text"), long_text);
  EXPECT_EQ(Call("TarvoV1", ""), long_text);
}

}  // namespace
