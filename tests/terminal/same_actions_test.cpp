// The same keys do the same on the desktop and in the terminal, so that a session that was recorded
// on the one replays on the other.

#include <future>
#include <map>

#include "tests/desktop/x_session.h"
#include "tests/terminal/dialogs.h"

namespace terminal_test {
namespace {

using workbench::ReadAll;
using workbench::TemporaryFolder;

// What the user does with one dialog.
struct Turn {
  const char* title;  // of its window
  const char* seen;   // in the terminal once it is there
  const char* keys;   // as xdotool names them
};

std::string Bytes(const std::string& keys) {
  static const std::map<std::string, std::string> kBytes{{"Tab", "\t"},
                                                         {"shift+Tab", "\033[Z"},
                                                         {"Return", "\r"},
                                                         {"space", " "},
                                                         {"Up", "\033OA"},
                                                         {"Down", "\033OB"},
                                                         {"Right", "\033OC"},
                                                         {"Left", "\033OD"},
                                                         {"Home", "\033OH"},
                                                         {"End", "\033OF"},
                                                         {"shift+Down", "\033[1;2B"},
                                                         {"BackSpace", "\177"},
                                                         {"Escape", "\033"},
                                                         {"ctrl+space", std::string(1, '\0')}};
  std::istringstream words(keys);
  std::string bytes;
  for (std::string word; words >> word;) {
    const auto known = kBytes.find(word);
    bytes += known == kBytes.end() ? word : known->second;
  }
  return bytes;
}

class SameActions : public testing::Test {
 protected:
  void ExpectSame(const Words& calculations, const std::vector<Turn>& turns) {
    const TemporaryFolder folder;
    const Words desktop = OnDesktop(calculations, turns, folder / "desktop");
    const Words terminal = InTerminal(calculations, turns, folder / "terminal");
    EXPECT_EQ(terminal, desktop);
    EXPECT_EQ(desktop[1].find("type"), std::string::npos);
    for (const char* recorded : {"desktop", "terminal"}) {
      Words words = Tarvo(calculations, {"--answers", folder / recorded});
      words.erase(words.begin());
      EXPECT_EQ(testing_tools::Run({TARVO_PROGRAM, words}).output, desktop[0]) << recorded;
    }
  }

 private:
  // The results and the recording.
  static Words OnDesktop(const Words& calculations, const std::vector<Turn>& turns,
                         const std::string& record) {
    const desktop_test::XSession user(desktop_test::XSession::Manager::kNone);
    desktop_test::OutputOf("xset r off");
    const std::string screen = std::string("DISPLAY=") + std::getenv("DISPLAY");
    Words words = Tarvo(calculations, {"--record-passwords", "--record", record});
    words.erase(words.begin());
    auto ending = std::async(std::launch::async, [&] {
      return testing_tools::Run({TARVO_PROGRAM, words, "", {screen}, ""});
    });
    for (const Turn& turn : turns) {
      EXPECT_NE(user.ActiveWindow(turn.title), 0U) << turn.title;
      // One by one: a menu needs time to open, and no key may repeat on a busy machine.
      std::istringstream keys(turn.keys);
      for (std::string key; keys >> key;) user.Key(key);
    }
    return {ending.get().output, ReadAll(record)};
  }

  static Words InTerminal(const Words& calculations, const std::vector<Turn>& turns,
                          const std::string& record) {
    const TemporaryFolder folder;
    const std::string output = folder / "output";
    Words words{"/bin/sh", "-c", "\"$0\" \"$@\" > " + output};
    const Words tarvo =
        Tarvo(calculations, {"--display", "terminal", "--record-passwords", "--record", record});
    words.insert(words.end(), tarvo.begin(), tarvo.end());
    TerminalUser user(words);
    for (const Turn& turn : turns) {
      user.Expect(turn.seen);
      user.Type(Bytes(turn.keys));
    }
    EXPECT_EQ(user.Status(), 0);
    return {ReadAll(output), ReadAll(record)};
  }
};

TEST_F(SameActions, Fields) {
  ExpectSame({R"(TarvoSetCaption ( "Names" ))", R"(TarvoPreEnterText ( "Ann|Lee" ))",
              R"(TarvoDialog ( "2|Enter|OK|Cancel|||First|Last" ))"},
             {{"Names", "Names", "Home x Tab y End BackSpace z shift+Tab w Tab Tab Tab space"}});
}

TEST_F(SameActions, EveryKindOfControl) {
  ExpectSame({R"(TarvoPopUps ( "red¶green¶blue" ))", R"(TarvoSetCustomControls ( "2|3|4|1" ))",
              R"(TarvoSetCaption ( "Custom" ))",
              R"(TarvoCustomDialog ( "4|Choose|OK||||Colour|Box|Radio|Secret" ))"},
             {{"Custom", "Custom",
               "Down Down Down Up r Tab space Down space Up space Tab Tab p w Return"}});
}

TEST_F(SameActions, List) {
  ExpectSame(
      {R"(TarvoFillListBox ( "one¶two¶three¶four" ))", R"(TarvoSetCaption ( "List" ))",
       R"(TarvoDoListBox ( "Choose|OK|No|||||1||1" ))"},
      {{"List", "List",
        "Return Tab Down Down shift+Down shift+Down Home space End Up f ctrl+space space Tab "
        "Return"}});
}

TEST_F(SameActions, AlertsAndEscape) {
  ExpectSame({R"(TarvoAlert ( "2|Sure?|It is for good.|Yes|No" ))", R"(TarvoAllowEscape ( 1 ))",
              R"(TarvoSetCaption ( "Last" ))", R"(TarvoDialog ( "1|Name" ))"},
             {{" ", "Sure?", "Right Left Left Right Tab space"}, {"Last", "Last", "x Escape"}});
}

}  // namespace
}  // namespace terminal_test
