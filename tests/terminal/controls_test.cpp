// Each kind of dialog and of control, used by keys, mouse and clipboard, and looked at.

#include "tests/terminal/dialogs.h"

namespace terminal_test {
namespace {

using workbench::ReadAll;
using workbench::TemporaryFolder;

class Controls : public testing::Test {
 protected:
  std::unique_ptr<TerminalUser> Start(const Words& calculations, const Words& environment = {},
                                      Size size = {}) {
    return std::make_unique<TerminalUser>(
        Tarvo(calculations, {"--display", "terminal", "--record", record_, "--record-numbers"}),
        environment, size);
  }

  // What the user did, without the lines that name the dialogs.
  std::string Recorded() const {
    std::istringstream lines(ReadAll(record_));
    std::string recorded;
    for (std::string line; std::getline(lines, line);) {
      if (!line.starts_with("#")) recorded += line + "; ";
    }
    return recorded;
  }

  const TemporaryFolder folder_;
  const std::string record_ = folder_ / "record";
};

const Words kFourKinds{R"(TarvoPopUps ( "red¶green¶blue" ))",
                       R"(TarvoSetCustomControls ( "2|3|4|1" ))", R"(TarvoSetCaption ( "Custom" ))",
                       R"(TarvoCustomDialog ( "4|Choose|OK|No|||Colour|Box|Radio|Secret" ))"};

TEST_F(Controls, DialogIsSeenAsDescribedAndTheCursorStandsOnTheFocus) {
  auto user = Start(kFourKinds);
  user->ExpectScreen(R"(


       ┌─────────────────────────── Custom ────────────────────────────┐
       │ Choose                                                        │
       │                                                               │
       │                                                               │
       │                                                               │
       │ Colour               [red                                 ↓]  │
       │                                                               │
       │ Box                  [ ]                                      │
       │                                                               │
       │ Radio                ( )                                      │
       │                                                               │
       │ Secret               [                                     ]  │
       │                                                               │
       │                                                               │
       │                                [     No     ]  [>   OK    <]  │
       │                                                               │
       └───────────────────────────────────────────────────────────────┘




)");
  user->ExpectCursorAt("red");
  user->Type(" ");
  user->Expect("│ green");
  user->Type(std::string(kDown) + kDown);
  user->ExpectCursorAt("blue");
  user->Type(kReturn);
  user->Expect("[blue");
  user->Type(std::string(kTab) + " ");
  user->Expect("[x]");
  user->ExpectCursorAt("[x]", 1);
  user->Type(std::string(kTab) + " ");
  user->ExpectCursorAt("(*)", 1);
  user->Type(std::string(kTab) + "pw");
  user->ExpectCursorAt("[**  ", 3);
  EXPECT_FALSE(user->Shows("pw"));
  user->Type(kTab);
  user->ExpectCursorAt("OK");
  user->Type(kTab);
  user->ExpectCursorAt("No  ");
  user->Type(" ");
  user->Expect("2|blue|1|1|pw");
  EXPECT_TRUE(user->IsAsBefore());
  EXPECT_EQ(Recorded(), "choose 1 3; click 2; click 3; enter 4 <password>; press 2; ");
}

TEST_F(Controls, EditingKeysChangeTheTextThatIsReported) {
  struct Case {
    const char* keys;
    const char* entered;
  };
  for (const Case& each : {Case{"Ann\x7f\x7fl", "Al"}, Case{"bc\033OHa\033OF!", "abc!"},
                           Case{"abc\033OD\033OD\033[3~x", "axc"},
                           Case{"one two\027three", "one three"}, Case{"old\001new", "new"},
                           Case{"old\tx\033[Znew", "new"}, Case{"e\u0301x\033OD\033OD\033[3~", "x"},
                           Case{"東京\x7f都", "東都"}, Case{"gone\025kept", "kept"}}) {
    auto user = Start({kNames});
    user->Expect("<]");
    user->Type(each.keys);
    user->Type(kReturn);
    user->Expect(std::string("1|") + each.entered + "|");
    EXPECT_EQ(user->Status(), 0);
  }
}

TEST_F(Controls, TextThatIsPreEnteredIsSelectedByTab) {
  auto user = Start({R"(TarvoPreEnterText ( "Ann|Lee" ))", kNames});
  user->Expect("[Lee");
  user->ExpectCursorAt("[Ann", 4);
  user->Type(std::string("!") + kTab + "Ray" + kReturn);
  user->Expect("1|Ann!|Ray|");
}

// Nothing in a pasted text is a key.
TEST_F(Controls, PastedTextIsTextToItsLastCharacter) {
  auto user = Start({kNames});
  user->Expect("<]");
  user->Paste("a\tb\rc\033[31m東");
  user->Expect("a␉b␍c␛[31m東");
  user->Type(kReturn);
  user->Expect("1|a");
  EXPECT_EQ(Recorded(), "enter 1 a\tb\rc\033[31m東; return; ");
}

const Words kList{R"(TarvoFillListBox ( "one¶two¶three¶four" ))", R"(TarvoSetCaption ( "List" ))",
                  R"(TarvoDoListBox ( "Choose|OK|No|||||1||1" ))"};

TEST_F(Controls, ListIsChosenByKeys) {
  auto user = Start(kList);
  user->Expect("<]");
  user->Type(std::string(kReturn) + kTab + kDown);
  user->ExpectCursorAt("* one");
  user->Type(std::string("\033[1;2B") + "f");  // Shift-Down, and a row's beginning
  user->ExpectCursorAt("* four");
  user->Type(std::string(1, '\0') + kUp + kReturn);  // Control-Space takes it away
  user->Expect("1|three");
  EXPECT_EQ(Recorded(), "return; row 1; row- 2; row 4; row+ 4; row 3; return; ");
}

// A blank is a part of what is typed, End goes to the last line, and arrows go the way they point.
TEST_F(Controls, RowsMenusAndButtonsAreFoundByKeys) {
  auto user = Start({R"(TarvoFillListBox ( "New Delhi¶New York¶Oslo" ))", kList[1],
                     R"(TarvoPopUps ( "New Delhi¶New York" ))", R"(TarvoSetCustomControls ( "2" ))",
                     R"(TarvoDoListBox ( "Choose|OK|No|Never" ))",
                     R"(TarvoCustomDialog ( "1|Where?|OK||||City" ))"});
  user->Expect("<]");
  user->Type(std::string(kTab) + "new y");
  user->ExpectCursorAt("* New York");
  user->Type(std::string("\033OF") + kTab + kTab + kLeft + kRight + " ");  // End; button 2
  user->Expect("Where?");
  user->Type(std::string(" new y") + kReturn);
  user->Expect("[New York");
  user->Type(kReturn);
  user->Expect("1|New York|||");
  EXPECT_EQ(Recorded(), "row 1; row 2; row 3; press 2; choose 1 2; return; ");
}

TEST_F(Controls, SpaceTwiceOnARowIsADoubleClick) {
  auto user = Start({kList[0], R"(TarvoDoListBox ( "Choose|OK|No||||1" ))"});
  user->Expect("<]");
  user->Type(std::string(kTab) + kDown + kDown + " ");
  user->Expect("1|two");
}

TEST_F(Controls, MouseDoesWhatItDoesOnTheDesktop) {
  auto user = Start({kFourKinds[0], kFourKinds[1], kFourKinds[2], kFourKinds[3], kList[0], kList[1],
                     R"(TarvoDoListBox ( "Choose|OK|No||||1" ))"});
  user->Expect("<]");
  user->Click("red");
  user->Expect("│ green");
  user->Click("green");
  user->Expect("[green");
  user->Click("[ ]", 1);
  user->Expect("[x]");
  user->Click("[>   OK", 5);
  user->Expect("List");
  user->Expect("two");
  user->Click("one");
  user->Expect("* one");
  user->Click("two", 56);  // the last column before the scroll bar
  user->Expect("* two");
  user->Click("two", 1);
  user->Expect("1|two");
  EXPECT_EQ(Recorded(), "choose 1 2; click 2; press 1; row 1 28; row 2 402; row 2 35; ");
}

TEST_F(Controls, AlertsShowTheirKindAndAnswerByKeys) {
  struct Case {
    const char* kind;
    const char* seen;
    const char* key;
    const char* result;
  };
  for (const Case& each :
       {Case{"0", "(X)   Sure?", kReturn, "\n1\n"}, Case{"1", "(i)   Sure?", kEscape, "\n2\n"},
        Case{"2", "/!\\   Sure?", "\t\t ", "\n3\n"}, Case{"3", "       Sure?", " ", "\n1\n"}}) {
    auto user =
        Start({std::string("TarvoAlert ( \"") + each.kind + "|Sure?|For good.|Yes|No|Perhaps\" )"});
    user->Expect(each.seen);
    user->Expect("For good.");
    user->Type(each.key);
    EXPECT_TRUE(user->WaitUntil([&] { return ("\n" + user->Screen()).find(each.result) == 0; }))
        << user->Screen();
  }
}

TEST_F(Controls, EscapeCancelsOnlyWhereItIsAllowed) {
  auto user = Start({kNames, R"(TarvoAllowEscape ( 1 ))", R"(TarvoDialog ( "1|Name" ))"});
  user->Expect("<]");
  user->Type("Ann");
  user->Type(kEscape);
  user->Type("\033a");  // with Alt, which is no Escape
  user->Expect("[Ann");
  user->Type(kReturn);
  user->Expect("│ Name");
  user->Type(kEscape);
  user->Expect("\nE\n");
  EXPECT_EQ(Recorded(), "enter 1 Ann; escape; return; escape; ");
}

TEST_F(Controls, LongMenusAndMessagesScroll) {
  std::string items = "1";
  for (int i = 2; i <= 3000; ++i) items += "¶" + std::to_string(i);
  auto user = Start({"TarvoPopUps ( \"" + items + "\" )", R"(TarvoSetCustomControls ( "2" ))",
                     "TarvoCustomDialog ( \"1|" + items.substr(0, 800) + "|OK||||Number\" )"});
  user->Expect("│ 12 ");
  EXPECT_FALSE(user->Shows("│ 38 "));
  user->Type("\033[6~\033[6~");  // a closed menu takes Page Down for itself
  user->Expect("[3 ");
  user->Type(std::string(" ") + "\033OF");
  user->Expect("│ 3000");
  user->Type(kReturn);
  user->Type(std::string(kTab) + "\033[6~");
  user->Expect("│ 38 ");
  user->Type(kReturn);
  user->Expect("1|3000|");
}

// Whatever a text says to a terminal, the terminal does not hear it.
TEST_F(Controls, NoTextReachesTheTerminalAsAnOrder) {
  const std::string evil =
      "\" & Char ( 27 ) & \"[99z\" & Char ( 27 ) & \"]0;x\" & Char ( 7 ) & "
      "Char ( 155 ) & \"99z\" & Char ( 8238 ) & \"";
  const Words tarvo = Tarvo(
      {"TarvoSetCaption ( \"" + evil + "\" )",
       "TarvoPreEnterText ( \"" + evil + "|" + evil + "\" )",
       "TarvoPopUps ( \"" + evil + "¶" + evil + "\" )", "TarvoSetCustomControls ( \"2|1\" )",
       "TarvoCustomDialog ( \"2|" + evil + "|" + evil + "|" + evil + "|" + evil + "|" + evil + "|" +
           evil + "|" + evil + "\" )",
       "TarvoFillListBox ( \"" + evil + "¶" + evil + "\" )",
       "TarvoDoListBox ( \"" + evil + "|" + evil + "\" )",
       "TarvoAlert ( \"0|" + evil + "|" + evil + "|" + evil + "|" + evil + "|" + evil + "\" )"});
  Words words{"/bin/sh", "-c", "\"$0\" \"$@\" > /dev/null"};  // results are printed as they are
  words.insert(words.end(), tarvo.begin(), tarvo.end());
  TerminalUser terminal(words);
  TerminalUser* user = &terminal;
  user->Expect("[␛[99z␛]0;x␇␦99z�");
  user->Type(" ");
  const auto menu_is_open = [&] { return user->Screen().find("┐") != user->Screen().rfind("┐"); };
  EXPECT_TRUE(user->WaitUntil(menu_is_open)) << user->Screen();
  user->Type(kEscape);
  EXPECT_TRUE(user->WaitUntil([&] { return !menu_is_open(); }));
  user->Type(std::string(kTab) + kTab + " ");
  user->Expect("│ │  ␛[99z␛]0;x␇␦99z�");
  user->Type("\t\t ");
  user->Expect("(X)");
  user->Type(kReturn);
  EXPECT_EQ(user->Status(), 0);
  const std::string written = user->Written();
  for (const char* order : {"\033[99z", "\033]0;x", "x\a", "\u009b", "\u202e"}) {
    EXPECT_EQ(written.find(order), std::string::npos) << order;
  }
}

TEST_F(Controls, ColoursAreTheTerminalsOwnOrNone) {
  for (const char* variable : {"NO_COLOR=", "NO_COLOR=1"}) {
    auto user = Start({kNames}, {variable});
    user->Expect("<]");
    const bool coloured = user->Written().find("\033[38;5;") != std::string::npos;
    EXPECT_EQ(coloured, std::string(variable) == "NO_COLOR=");
    EXPECT_EQ(user->Written().find("\033[48;5;"), std::string::npos) << "the background stays";
    user->Type(kReturn);
    EXPECT_EQ(user->Status(), 0);
  }
}

}  // namespace
}  // namespace terminal_test
