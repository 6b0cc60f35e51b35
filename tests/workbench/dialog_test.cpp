// Dialogs of the plug-in, answered from scripts and written down.

#include <algorithm>
#include <nlohmann/json.hpp>
#include <set>

#include "displays/protocol/display_json.h"
#include "tests/support/tarvo.h"

namespace workbench {
namespace {

using display::Json;

constexpr const char* kNames = "TarvoDialog ( \"2|Enter the name|OK|Cancel|||First|Last|||2\" )";
constexpr const char* kName = "TarvoDialog ( \"1|Your name|OK||||Name\" )";

TEST(DialogTest, TheAnswersOfTheFileComeFirst) {
  const TemporaryFolder folder;
  const std::string file = folder.Write("a", "# names\r\n\r\nenter 1 Ann\r\nenter 2 Lee; Jr.\r\n");
  const Ending ending = Tarvo({"eval", kNames, "TarvoV1 ( \"\" ) & TarvoLC ( \"\" )", "--answer",
                               "press 2", "--answers", file});
  EXPECT_EQ(ending.status, 0);
  EXPECT_EQ(ending.output, "2|Ann|Lee; Jr.||\nAnn2\n");
  EXPECT_EQ(ending.errors, "");
}

TEST(DialogTest, AMissingOrWrongAnswerIsStatus4) {
  const TemporaryFolder folder;
  const std::string file = folder.Write("a", "\nenter 1 Ann\npress 4\n");
  const struct {
    std::vector<std::string> options;
    const char* message;
  } cases[] = {
      {{"--display", "scripted"}, "tarvo: dialog \"Who?\": there is no answer left\n"},
      {{"--answer", "enter 1 x; tab"},
       "dialog \"Who?\": --answer, line 2: there is no answer left\n"},
      {{"--answers", file}, "/a, line 3: \"press 4\": "},
      {{"--answer", "enter 3 x; press 1"}, "dialog \"Who?\": --answer, line 1: \"enter 3 x\": "},
      {{"--answer", "tab", "--answer", "click 1"}, "--answer, line 2: \"click 1\": "},
      {{"--answer", "press 5"}, "line 1: \"press 5\": there is no button 5"},
      {{"--answer", "press 800"}, "line 1: \"press 800\": there is no button 800"},
      {{"--answer", "press -2147483648"}, "there is no button -2147483648"},
      {{"--answer", "enter 2147483647 x"}, "there is no"},
  };
  for (const auto& [options, message] : cases) {
    std::vector<std::string> words{"eval", "TarvoSetCaption ( \"Who?\" )", kNames, "3"};
    words.insert(words.begin(), options.begin(), options.end());
    const Ending ending = Tarvo(words);
    EXPECT_EQ(ending.status, 4) << message;
    EXPECT_EQ(ending.output, "Who?\n") << message;
    EXPECT_TRUE(Holds(ending.errors, message)) << ending.errors;
    EXPECT_TRUE(IsOneLine(ending.errors)) << ending.errors;
  }
  EXPECT_TRUE(Holds(Tarvo({"--answer", "press 3", "eval", "TarvoAlert ( \"0|Stop|x|OK\" )"}).errors,
                    "dialog \"Stop\": --answer, line 1: "));
  EXPECT_TRUE(Holds(Tarvo({"--answer", "press 3", "eval", kName}).errors,
                    "dialog \"Your name\": --answer, line 1: "))
      << "without a caption";
}

TEST(DialogTest, NoDisplayIsStatus5AtOnce) {
  const std::string no_screen = "neither DISPLAY nor WAYLAND_DISPLAY is set";
  const std::string no_terminal = "there is no terminal";
  for (const auto& [kind, reason] : {std::pair{"auto", no_screen + ", and " + no_terminal},
                                     {"desktop", no_screen},
                                     {"terminal", no_terminal}}) {
    const Ending ending = Tarvo({"--display", kind, "eval", "1", kNames, "2"});
    EXPECT_EQ(ending.status, 5);
    EXPECT_EQ(ending.output, "1\n");
    EXPECT_EQ(ending.errors, "tarvo: no display: the dialog \"Enter the name\" has no window: " +
                                 reason + "; --answer or --answers answers it without a screen\n");
  }
  EXPECT_EQ(Tarvo({"eval", "TarvoDialogVersion ( 0 )"}).status, 0) << "needs no display";
}

TEST(DialogTest, DescriptionsAreWrittenAsDialogsOpen) {
  const TemporaryFolder folder;
  const std::string file = folder.Write("log", "what stood here before\n");
  EXPECT_EQ(Tarvo({"--describe", file, "info"}).status, 0);
  EXPECT_EQ(ReadAll(file), "");
  const Ending ending =
      Tarvo({"--describe", file, "--answer", "press 1; press 2; enter 1 changed; press 1", "eval",
             kNames, "TarvoAlert ( \"1|Really?|No way back.|Yes|No\" )", kName, kName});
  EXPECT_EQ(ending.status, 4);
  std::istringstream lines(ReadAll(file));
  std::vector<Json> dialogs;
  for (std::string line; std::getline(lines, line);) dialogs.push_back(display::ParseJson(line));
  ASSERT_EQ(dialogs.size(), 4u);
  EXPECT_EQ(dialogs[2], dialogs[3]) << "as it opened, not as it was answered";
  EXPECT_EQ(dialogs[0]["kind"], "window");
  EXPECT_EQ(dialogs[0]["content"], Json({464, 747, 616, 1172}));
  const std::vector<std::string> keys{"kind",    "command", "id",      "rect",   "text",
                                      "value",   "min",     "max",     "items",  "rows",
                                      "visible", "enabled", "default", "cancel", "focused",
                                      "size",    "font",    "menu",    "cell"};
  for (const Json& control : dialogs[0]["controls"]) {
    for (const std::string& key : keys) EXPECT_TRUE(control.contains(key)) << key;
    EXPECT_EQ(control.size(), keys.size());
  }
  EXPECT_EQ(dialogs[1], display::ParseJson(R"({"kind": "alert", "type": 1, "message": "Really?",
      "explanation": "No way back.", "default": "Yes", "cancel": "No", "other": null,
      "returnButton": 1, "escapeButton": 2, "position": 45066, "movable": false,
      "helpButton": false, "flags": 0})"));
}

// What of a JSON Schema the description's uses. Every key is to be named by it.
class Schema {
 public:
  explicit Schema(const std::string& file) : root_(display::ParseJson(ReadAll(file))) {}

  bool Allows(const Json& value) const { return Allows(root_, value); }

 private:
  static bool IsOfType(const Json& value, const std::string& type) {
    if (type == "integer") return value.is_number_integer();
    return value.type_name() == type;
  }

  bool Allows(const Json& schema, const Json& value) const {
    if (schema.contains("$ref")) {
      return Allows(root_.at(Json::json_pointer(schema["$ref"].get<std::string>().substr(1))),
                    value);
    }
    const auto allows = [&](const Json& other) { return Allows(other, value); };
    if (schema.contains("oneOf")) {
      return std::count_if(schema["oneOf"].begin(), schema["oneOf"].end(), allows) == 1;
    }
    if (schema.contains("enum")) {
      return std::count(schema["enum"].begin(), schema["enum"].end(), value) == 1;
    }
    const Json& type = schema.at("type");
    const Json types = type.is_array() ? type : Json::array({type});
    if (std::none_of(types.begin(), types.end(),
                     [&](const Json& each) { return IsOfType(value, each.get<std::string>()); })) {
      return false;
    }
    if (value.is_array()) {
      return std::all_of(value.begin(), value.end(),
                         [&](const Json& item) { return Allows(schema.at("items"), item); });
    }
    if (!value.is_object()) return true;
    const Json& properties = schema.at("properties");
    const auto names = value.items();
    return std::all_of(schema["required"].begin(), schema["required"].end(),
                       [&](const Json& name) { return value.contains(name.get<std::string>()); }) &&
           std::all_of(names.begin(), names.end(), [&](const auto& item) {
             return properties.contains(item.key()) && Allows(properties[item.key()], item.value());
           });
  }

  Json root_;
};

TEST(DialogTest, DescriptionsKeepToTheirSchema) {
  const TemporaryFolder folder;
  const std::string file = folder / "log";
  Tarvo({"--describe", file, "--answer", "press 1; press 1; row 1; press 1; press 1", "eval",
         "TarvoPopUps ( \"red¶green\" )", "TarvoSetCustomControls ( \"2|3|4|1\" )",
         "TarvoCustomDialog ( \"4|Choose|OK||||A|B|C|D\" )", kNames,
         "TarvoFillListBox ( \"one¶two\" )", "TarvoDoListBox ( \"Choose|OK|No\" )",
         "TarvoAlert ( \"1|a|b|OK\" )"});
  const Schema schema(std::string(PROJECT_SOURCE_DIR) + "/docs/description.schema.json");
  std::istringstream lines(ReadAll(file));
  std::set<std::string> kinds;
  int count = 0;
  for (std::string line; std::getline(lines, line); ++count) {
    Json dialog = display::ParseJson(line);
    EXPECT_TRUE(schema.Allows(dialog)) << line;
    if (dialog["kind"] == "alert") continue;
    for (const Json& control : dialog["controls"]) kinds.insert(control["kind"]);
    dialog["controls"][0]["rect"][0] = "5";
    EXPECT_FALSE(schema.Allows(dialog));
  }
  EXPECT_EQ(count, 4);
  EXPECT_EQ(kinds.size(), 8u);
}

TEST(DialogTest, FilesMayBeStandardInputAndOutput) {
  const TemporaryFolder folder;
  const std::string out = folder.Write("out", "");
  for (const std::string& file : {std::string("-"), out}) {
    const Ending ending =
        testing_tools::Run({TARVO_PROGRAM,
                            {"--record", file, "--answers", "-", "eval", "1", kName, "2"},
                            "enter 1 Ann\npress 1\n",
                            {},
                            out});
    EXPECT_EQ(ending.errors, "");
    EXPECT_EQ(ReadAll(out), "1\n# dialog 1: Your name\nenter Name Ann\npress OK\n1|Ann|||\n2\n")
        << file;
    folder.Write("out", "");
  }
  EXPECT_EQ(
      Tarvo({"eval", "-", "$x", "--args-json", folder.Write("j", "{\"x\": \"a\", \"Y\": 2.50}")},
            "$y\n* 2")
          .output,
      "5\na\n");
}

TEST(DialogTest, OlderPicturesGoAway) {
  const TemporaryFolder folder;
  for (const char* name : {"1.png", "07.png", "a1.png", "1.png.txt"}) folder.Write(name, "old");
  EXPECT_EQ(Tarvo({"--screenshot", folder / "", "eval", "1"}).status, 0);
  EXPECT_EQ(ReadAll(folder / "1.png") + ReadAll(folder / "07.png"), "");
  EXPECT_EQ(ReadAll(folder / "a1.png") + ReadAll(folder / "1.png.txt"), "oldold");
}

// A folder stands where the picture should: the painter cannot write it.
TEST(DialogTest, APainterThatFailsEndsTheProgram) {
  const TemporaryFolder folder;
  std::filesystem::create_directories(folder / "1.png/x");
  const Ending ending =
      Tarvo({"--screenshot", folder / "", "--answer", "press 1", "eval", kName, "2"});
  EXPECT_EQ(ending.status, 1);
  EXPECT_EQ(ending.output, "");
  EXPECT_TRUE(Holds(ending.errors, "tarvo: cannot draw ")) << ending.errors;
}

TEST(DialogTest, TypedLineFeedsAreFileMakersLineBreaks) {
  const TemporaryFolder folder;
  const std::string record = folder / "record";
  const std::string answers = folder.Write("a", "enter 1 a\rb\r\r\npress 1\n");
  EXPECT_EQ(Tarvo({"--record", record, "--answers", answers, "eval", "--json", kName}).output,
            "{\"type\": \"text\", \"result\": \"1|a\\rb\\r|||\"}\n");
  EXPECT_TRUE(Holds(ReadAll(record), "enter Name a\rb\r\r\n"));
  EXPECT_EQ(Tarvo({"--answer", "enter 1 a\nb\r\nc\n; press 1", "eval", "--json", kName}).output,
            "{\"type\": \"text\", \"result\": \"1|a\\rb\\rc\\r|||\"}\n");
}

TEST(DialogTest, ARecordingGivesTheSameResultAgain) {
  const TemporaryFolder folder;
  const std::string record = folder / "record";
  const std::string answers = "enter 1  Ann ; enter 2 secret; press 2";
  const std::string result = "2| Ann |secret||\n";
  EXPECT_EQ(Tarvo({"--record", record, "--answer", answers, "eval", kNames}).output, result);
  EXPECT_EQ(ReadAll(record),
            "# dialog 1: Enter the name\nenter First  Ann \nenter Last <password>\npress Cancel\n");
  Tarvo({"--record", record, "--record-numbers", "--answer", answers, "eval", kNames});
  EXPECT_EQ(ReadAll(record),
            "# dialog 1: Enter the name\nenter 1  Ann \nenter 2 <password>\npress 2\n");
  EXPECT_EQ(
      Tarvo({"--record", record, "--record-passwords", "--answer", answers, "eval", kNames}).output,
      result);
  EXPECT_EQ(Tarvo({"--answers", record, "eval", kNames}).output, result);
}

// Each dialog is recorded, and answered again after everything in it has changed its place.
TEST(DialogTest, ARecordingAnswersByNamesWhateverTheirPlace) {
  const struct {
    std::vector<std::string> recorded;
    const char* answers;
    const char* recording;
    std::vector<std::string> moved;
    const char* result;
  } cases[] = {
      {{"TarvoDialog ( \"2|m|OK|Log out|||First¶name|Last\" )"},
       "enter 1 Ann; press 2",
       "enter \"First name\" Ann\npress \"Log out\"\n",
       {"TarvoDialog ( \"4|m|OK|||Log out|A|B|Last|First¶name\" )"},
       "4||||Ann\n"},
      {{"TarvoPopUps ( \"Rome¶New York|a¶b\" )", "TarvoSetCustomControls ( \"2|3\" )",
        "TarvoCustomDialog ( \"2|m|OK|Save|||City|Copy to me\" )"},
       "choose 1 2; click 2; press 2",
       "choose City \"New York\"\nclick \"Copy to me\"\npress Save\n",
       {"TarvoPopUps ( \"a¶b|New York¶Rome\" )", "TarvoSetCustomControls ( \"3|2\" )",
        "TarvoCustomDialog ( \"2|m|Save|OK|||Copy to me|City\" )"},
       "1|1|New York||\n"},
      {{"TarvoFillListBox ( \"Fig¶Pears¶Fig¶Kiwi\" )", "TarvoDoListBox ( \"m|OK|No|||||||1\" )"},
       "row 2 300; row+ 3; row+ 4; press 1",
       "row \"Pears\" 300\nrow+ 3\nrow+ \"Kiwi\"\npress OK\n",
       {"TarvoFillListBox ( \"Pears¶Kiwi¶Plum\" )", "TarvoDoListBox ( \"m|No|OK|||||||1\" )"},
       "2|Pears|Kiwi|Plum\n"},
      {{"TarvoAlert ( \"1|m||OK|OK|\\\"No\\\"\" )", "TarvoAlert ( \"1|m||OK|OK|no\" )"},
       "press 3; press 1",
       "press \"\\\"No\\\"\"\n# dialog 2: m\npress 1\n",
       {"TarvoAlert ( \"1|m||\\\"No\\\"|OK\" )", "TarvoAlert ( \"1|m||OK|OK|no\" )"},
       "1\n1\n"}};
  const TemporaryFolder folder;
  const std::string record = folder / "record";
  for (const auto& row : cases) {
    std::vector<std::string> words{"--record", record, "--answer", row.answers, "eval"};
    words.insert(words.end(), row.recorded.begin(), row.recorded.end());
    EXPECT_EQ(Tarvo(words).status, 0);
    EXPECT_EQ(ReadAll(record), "# dialog 1: m\n" + std::string(row.recording));
    words = {"--answers", record, "eval"};
    words.insert(words.end(), row.moved.begin(), row.moved.end());
    const Ending ending = Tarvo(words);
    EXPECT_TRUE(ending.output.ends_with(row.result)) << ending.output << ending.errors;
  }
}

TEST(DialogTest, ANameThatIsNotOneThingIsRefusedWithWhatIsThere) {
  const char* const dialog =
      "TarvoDialog ( \"5|m|OK|Cancel|OK||Name|Name|City\" ) & TarvoDoListBox ( \"m\" ) & "
      "TarvoAlert ( \"1|m\" )";
  const char* const menus =
      "TarvoPopUps ( \"1¶2¶3¶4¶5¶6¶7¶8¶9¶10¶11|1¶2¶3¶4¶5¶6¶7¶8¶9¶10¶|a¶b¶b¶é\" )";
  const struct {
    const char* answer;
    const char* reason;
  } cases[] = {
      {"press Save", "there is no button \"Save\"; there are \"OK\", \"Cancel\" and \"OK\""},
      {"press OK", "\"OK\" is the name of buttons 1 and 3; its number says which is meant"},
      {"enter Name x", "\"Name\" is the name of fields 1 and 2; its number"},
      {"click Street", "there is no field \"Street\"; there are \"Name\", \"Name\" and \"City\""},
      {"choose City \"c\"", "there is no item \"c\"; there are \"a\", \"b\", \"b\" and \"é\""},
      {"choose City \"b\"", "\"b\" is the name of items 2 and 3; its number"},
      {"choose 1 \"z\"",
       "there is no item \"z\"; there are \"1\", \"2\", \"3\", \"4\", \"5\", \"6\", \"7\", "
       "\"8\", \"9\", \"10\" and more\n"},
      {"choose 2 \"z\"",
       "there is no item \"z\"; there are \"1\", \"2\", \"3\", \"4\", \"5\", \"6\", \"7\", "
       "\"8\", \"9\" and \"10\"\n"},
      {"choose 4 \"a\"", "there is no item \"a\"\n"},
      {"choose 2147483647 \"a\"", "there is no item \"a\"\n"},
      {"press Cancel; press OK; choose 1 \"a\"", "there is no item \"a\"\n"},
      {"choose City \"é\"; row \"a\"", "there is no row \"a\""},
      {"press Cancel; row \"a\"", "there is no row \"a\""},
      {"press Cancel; press Yes", "there is no button \"Yes\"; there is \"OK\""},
      {"enter City x", "there is no edit or password field 3"},
  };
  for (const auto& [answer, reason] : cases) {
    const Ending ending = Tarvo({"--answer", answer, "eval", menus, dialog});
    EXPECT_EQ(ending.status, 4) << answer;
    EXPECT_TRUE(Holds(ending.errors, std::string("\": ") + reason)) << ending.errors;
  }
}

TEST(DialogTest, APlaceholderIsNeverTyped) {
  const TemporaryFolder folder;
  const std::string record = folder / "record";
  Tarvo({"--record", record, "--answer",
         "type ab; tab; type c; press 1; enter 1 <password>; enter 2 x; press 1", "eval", kNames,
         kNames});
  const std::string passwords = folder.Write("passwords", "two\r\nthree\n");
  const std::string result = "1|ab|one||\n1|<password>|two||\n";
  const std::vector<std::string> words{"--answers", record, "eval", kNames, kNames};
  EXPECT_EQ(Tarvo(words, "", {"TARVO_PASSWORDS=one\ntwo"}).output, result);
  EXPECT_EQ(Tarvo({"--passwords", passwords, "--answers", record, "eval", kNames, kNames}, "",
                  {"TARVO_PASSWORDS=one"})
                .output,
            "1|ab|two||\n1|<password>|three||\n");
  const Ending ending = Tarvo(words, "", {"TARVO_PASSWORDS=one"});
  EXPECT_EQ(ending.status, 4);
  EXPECT_EQ(ending.output, "1|ab|one||\n");
  EXPECT_TRUE(Holds(ending.errors,
                    "record, line 8: \"enter Last <password>\": the recording does "
                    "not hold this password; --passwords or TARVO_PASSWORDS"))
      << ending.errors;
}

TEST(DialogTest, AnswersThatDoNotFitAreTold) {
  const TemporaryFolder folder;
  const std::string record = folder / "record";
  Tarvo({"--record", record, "--record-numbers", "--answer", "enter 1 Ann; press 1; press 1",
         "eval", "TarvoSetCaption ( \"Who?\" )", kName,
         "TarvoAlert ( \"1|Really?|No way¶back.|Yes\" )"});
  EXPECT_EQ(ReadAll(record),
            "# dialog 1: Who?: Your name\nenter 1 Ann\npress 1\n"
            "# dialog 2: Really?: No way back.\npress 1\n");
  const std::string asked_other = "TarvoDialog ( \"1|Your address|OK||||Name\" )";
  const std::string alert = "TarvoAlert ( \"1|Really?|No way back.|Yes\" )";
  const struct {
    std::vector<std::string> calculations;
    const char* message;  // empty: all fits
  } cases[] = {
      {{kName, alert}, ""},
      {{kName}, "record, line 5: an answer is left over, \"press 1\"\n"},
      {{}, "record, line 2: 3 answers are left over, from \"enter 1 Ann\" on\n"},
      {{asked_other, alert},
       "record, line 2: \"enter 1 Ann\" was recorded for the dialog \"Who?: Your name\", not "
       "for "
       "\"Who?: Your address\"\n"},
      {{kName, kName},
       "record, line 5: \"press 1\" was recorded for the dialog \"Really?: No way back.\", not"},
  };
  for (const auto& [calculations, message] : cases) {
    std::vector<std::string> words{"--answers", record, "eval", "TarvoSetCaption ( \"Who?\" )"};
    words.insert(words.end(), calculations.begin(), calculations.end());
    const Ending told = Tarvo(words);
    EXPECT_EQ(told.status, 0) << message;
    EXPECT_TRUE(*message != 0 ? told.errors.starts_with("tarvo: ") : told.errors.empty());
    EXPECT_TRUE(Holds(told.errors, message)) << told.errors;
    words.insert(words.begin(), "--strict");
    const Ending strict = Tarvo(words);
    EXPECT_EQ(strict.status, *message != 0 ? 4 : 0) << message;
    EXPECT_TRUE(Holds(strict.errors, message)) << strict.errors;
  }
  EXPECT_TRUE(Holds(Tarvo({"--answer", "tab; return; press 1", "eval", kName}).errors,
                    "--answer, line 3: an answer is left over"));
  const std::string twice = folder.Write("twice", "# dialog 1: Your name\npress 1\npress 1\n");
  EXPECT_TRUE(Holds(Tarvo({"--answers", twice, "eval", kName, kName}).errors,
                    "line 3: \"press 1\" was recorded for the dialog before, \"Your name\", not"));
}

TEST(DialogTest, TypedPasswordsAreRecordedAsPlaceholdersToo) {
  const TemporaryFolder folder;
  const std::string record = folder / "record";
  const Ending ending = Tarvo({"--record", record, "--answer", "type ab; tab; type cd; press 1",
                               "eval", "TarvoSetCaption ( \"One¶two\" )", kNames});
  EXPECT_TRUE(ending.output.ends_with("1|ab|cd||\n")) << ending.output;
  EXPECT_EQ(ReadAll(record),
            "# dialog 1: One two: Enter the name\ntype ab\ntab\ntype <password>\npress OK\n");
}

TEST(DialogTest, ScreenshotsAreDrawnWithoutAScreen) {
  const TemporaryFolder folder;
  const std::string pictures = folder / "some/pictures; $HOME";
  const Ending ending = Tarvo({"--screenshot", pictures, "--answer", "press 1; press 1", "eval",
                               kNames, "TarvoAlert ( \"0|a|b|OK\" )"});
  EXPECT_EQ(ending.status, 0) << ending.errors;
  for (const char* name : {"/1.png", "/2.png"}) {
    EXPECT_TRUE(ReadAll(pictures + name).starts_with("\x89PNG")) << name;
  }
}

// Two dialogs that nobody answers, and a step that shows one.
TEST(DialogTest, APreviewWithoutAScreenIsDrawnOrRefused) {
  const TemporaryFolder folder;
  const std::string script = folder.Write(
      "form.tarvo",
      "TarvoDialog ( \"2|Enter the name|OK|Cancel|First|Last\" )\nTarvoAlert ( \"1|Ready\" )\n"
      "Show Custom Dialog [ \"Title\" ; \"Message\" ]\nTarvoV1 ( \"\" )\n");
  const Ending drawn = Tarvo({"preview", script, "--screenshot", folder / "pictures"});
  EXPECT_EQ(drawn.status, 0);
  EXPECT_EQ(drawn.output, "");
  EXPECT_TRUE(Holds(drawn.errors, "line 1, column 43: \"First\" is a button")) << drawn.errors;
  for (const char* name : {"pictures/1.png", "pictures/2.png", "pictures/3.png"}) {
    EXPECT_TRUE(ReadAll(folder / name).starts_with("\x89PNG")) << name;
  }
  EXPECT_EQ(Tarvo({"preview", script, "--screenshot", folder / "pictures", "--strict"}).status, 1);

  const Ending refused = Tarvo({"preview", script});
  EXPECT_EQ(refused.status, 5);
  EXPECT_EQ(refused.errors,
            "tarvo: no screen for the preview: neither DISPLAY nor WAYLAND_DISPLAY is set; "
            "--screenshot DIR draws the dialogs without one\n");
  EXPECT_EQ(Tarvo({"preview", folder / "none"}).status, 2);
  EXPECT_EQ(Tarvo({"preview", "-"}, "1").status, 2);
  EXPECT_EQ(Tarvo({"preview", script, "--only", "nonsense"}).status, 2);
}

TEST(DialogTest, WhatCannotBeWrittenEndsTheProgram) {
  const Ending ending = Tarvo({"--describe", "/dev/full", "--answer", "press 1", "eval", kNames});
  EXPECT_EQ(ending.status, 1);
  EXPECT_EQ(ending.output, "");
  EXPECT_EQ(ending.errors, "tarvo: cannot write /dev/full: No space left on device\n");
}

TEST(DialogTest, ExamplesRunToTheirEnd) {
  const std::filesystem::path examples = std::string(PROJECT_SOURCE_DIR) + "/examples";
  int count = 0;
  for (const auto& entry : std::filesystem::directory_iterator(examples)) {
    if (entry.path().extension() != ".tarvo") continue;
    std::filesystem::path answers = entry.path();
    answers.replace_extension(".answers");
    const Ending ending = Tarvo({"run", entry.path(), "--answers", answers});
    EXPECT_EQ(ending.status, 0) << entry.path() << ending.errors;
    std::filesystem::path expected = entry.path();
    expected.replace_extension(".expected");
    EXPECT_EQ(ending.output, ReadAll(expected)) << entry.path();
    ++count;
  }
  EXPECT_EQ(count, 4);
}

}  // namespace
}  // namespace workbench
