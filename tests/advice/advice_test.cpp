// The table of all advice, through the program: each example gets its advice, and right dialogs
// none.

#include <algorithm>
#include <nlohmann/json.hpp>
#include <regex>
#include <set>

#include "advice/advice.h"
#include "advice/parameters.h"
#include "advice/presets.h"
#include "displays/protocol/display_json.h"
#include "tests/support/tarvo.h"

namespace workbench {
namespace {

// With an answer for each dialog of what is evaluated here, and some that are left over.
Ending Advised(const std::vector<std::string>& calculations, bool measures = false) {
  std::vector<std::string> words{"--advise", "--answer", "press 1; press 1; press 1", "eval"};
  words.insert(words.end(), calculations.begin(), calculations.end());
  if (!measures) words.insert(words.end(), {"--except", "text-cut"});  // it starts the display
  return Tarvo(words);
}

// The names in square brackets.
std::set<std::string> NamesIn(const std::string& errors) {
  std::set<std::string> names;
  const std::regex name(R"(\[([a-z-]+)\]\n)");
  for (std::sregex_iterator match(errors.begin(), errors.end(), name), end; match != end; ++match) {
    names.insert((*match)[1]);
  }
  return names;
}

using Names = std::set<std::string>;

TEST(AdviceTest, EveryExampleGetsItsAdviceAlone) {
  Names names;
  for (const advice::Advice& advice : advice::AllAdvice()) {
    const std::string name(advice.name);
    EXPECT_TRUE(names.insert(name).second) << name;
    const auto lines = advice::Split(advice.example, '\n');
    const Ending ending = Advised({lines.begin(), lines.end()}, name == "text-cut");
    EXPECT_EQ(NamesIn(ending.errors), Names{name}) << ending.errors;
    EXPECT_TRUE(Holds(ending.errors, ": " + std::string(advice.reason) + " [")) << ending.errors;
  }
}

TEST(AdviceTest, RightDialogsGetNone) {
  const std::vector<std::vector<std::string>> dialogs{
      {R"(TarvoDialog ( "0|Hello" ))"},
      {R"(TarvoDialog ( "0|Save the changes?|Save|Discard" ))"},
      {R"(TarvoDialog ( "1|Your name?|OK|Cancel|Help" ))"},
      {R"(TarvoDialog ( " 3 fields|Who?|OK||||First|Last|Title|||" ))"},
      {R"(TarvoDialog ( "0|Delete it?|Delete|Keep" ))"},
      {R"(TarvoAllowEscape ( 1 ))", R"(TarvoDialog ( "0|Delete it?|Delete|Cancel" ))"},
      {R"(TarvoAllowEscape ( "0" ))", R"(TarvoDialog ( "1|Your name?|OK" ))"},
      {R"(TarvoSetFocus ( 0 ))", R"(TarvoDialog ( "2|Who?|OK||||First|Last" ))"},
      {R"(TarvoDialog ( "2|Who?|OK||||First|Last" ))", R"(TarvoSetFocus ( 2 ))",
       R"(TarvoDialog ( "0|Hello" ))", R"(TarvoDialog ( "2|Who?|OK||||First|Last" ))"},
      {R"(TarvoPopUps ( "Small¶Large|--" ))", R"(TarvoDialog ( "5|Shirt?|OK||||Size|Name|||-2" ))"},
      {R"(TarvoPopUps ( "|Red¶Blue" ))", R"(TarvoSetCustomControls ( "0|2|3|3" ))",
       R"(TarvoPreEnterText ( "Ann|Blue|0|no" ))",
       R"(TarvoCustomDialog ( "4|Shirt?|OK||||Name|Colour|Gift|Urgent" ))"},
      {R"(TarvoSetCustomControls ( "3|3" ))", R"(TarvoPreEnterText ( "1|0|0|0" ))",
       R"(TarvoCustomDialog ( "2|How?|Send|||Later|Copy|Urgent" ))"},
      {R"(TarvoFillListBox ( "a¶b|c" ))", R"(TarvoSetCaption ( "Orders | 2024" ))",
       R"(TarvoDoListBox ( "Which?|OK|Cancel|||0|1|no|0|1" ))"},
      {R"(TarvoAlert ( "2|Delete?|Gone for good.|Delete|Nothing" ))"},
      {R"(TarvoAlert ( "|Plain.||OK" ))"},
      {R"(Let ( b = "OK|Cancel|||First|Last" ; TarvoDialog ( "2|Who?|" & b ) ))"},
      {R"(Let ( a = "|Who?" ; TarvoDialog ( "0" & a & "|OK" ) ))"},
      {R"(TarvoPosition ( "100|200" ))", R"(TarvoPreEnterText ( "a" ))"},
  };
  for (const auto& calculations : dialogs) {
    const Ending ending = Advised(calculations);
    EXPECT_EQ(ending.status, 0) << ending.errors;
    EXPECT_EQ(NamesIn(ending.errors), Names()) << ending.errors;
  }
}

TEST(AdviceTest, WrongDialogsGetWhatTheyMust) {
  const struct {
    std::vector<std::string> calculations;
    Names names;
  } cases[] = {
      {{R"(TarvoDialog ( "1||OK|Cancel|Name" ))"}, {"labels-as-buttons"}},
      {{R"(TarvoDialog ( "1|Who?|OK|Cancel|Name:" ))"}, {"labels-as-buttons"}},
      {{R"(TarvoDialog ( "2|Who?|||||OK|Cancel" ))"}, {"buttons-as-labels"}},
      {{R"(TarvoDialog ( "1||OK" ))"}, {"field-without-label"}},
      {{R"(TarvoCustomDialog ( "1|Secret?|OK||||Name||||1" ))"}, {"surplus-items"}},
      {{R"(TarvoAllowEscape ( "yes" ))", R"(TarvoDialog ( "0|Hello" ))"}, {"text-for-number"}},
      {{R"(TarvoDialog ( "-1|Hello" ))"}, {"no-such-count"}},
      {{R"(TarvoSetCustomControls ( "0|5" ))", R"(TarvoCustomDialog ( "2|m|OK||||First|Last" ))"},
       {"no-such-kind"}},
      {{R"(TarvoPopUps ( "a¶b" ))", R"(TarvoDialog ( "5|m|OK||||Size||||-2" ))"},
       {"no-such-password-field"}},
      {{R"(TarvoPreEnterText ( "a" ))", R"(TarvoDialog ( "0|Hello" ))"}, {"text-for-no-field"}},
      {{R"(TarvoSetCustomControls ( "2" ))", R"(TarvoCustomDialog ( "1|Size?|OK" ))"},
       {"menu-missing"}},
      {{R"(Let ( t = "Smith | Sons" ; TarvoPreEnterText ( t & "|" & t ) ))"}, {"bar-in-data"}},
      {{R"(TarvoAlert ( "1|m||OK|OK" ))"}, {"same-buttons"}},
      {{R"(TarvoAlert ( "0|All will be lost.||Delete all" ))"}, {"no-way-back"}},
      {{R"(TarvoCustomDialog ( "0|m|Senden|Abbrechen" ))"}, {"escape-forbidden"}},
      {{R"(TarvoSetCustomControls ( "3" ))", R"(TarvoDialog ( "1|m|OK" ))",
        R"(TarvoCustomDialog ( "1|m|OK" ))"},
       {"preset-unused"}},
      {{R"(TarvoPosition ( "1|2" ))", R"(TarvoAlert ( "1|m||OK" ))"}, {"preset-unused"}},
      {{R"(TarvoPopUps ( "a¶b" ))", R"(TarvoDialog ( "1|m|OK" ))"}, {"preset-unused"}},
  };
  for (const auto& [calculations, names] : cases) {
    const Ending ending = Advised(calculations);
    EXPECT_EQ(NamesIn(ending.errors), names) << ending.errors;
  }
}

// Files are advised as they are run, with their own answers.
TEST(AdviceTest, TheExamplesGetNone) {
  const std::filesystem::path examples = PROJECT_SOURCE_DIR "/examples";
  for (const auto& entry : std::filesystem::directory_iterator(examples)) {
    if (entry.path().extension() != ".tarvo") continue;
    const std::string answers = std::filesystem::path(entry.path()).replace_extension(".answers");
    const Ending ending =
        Tarvo({"--advise", "--strict", "--answers", answers, "run", entry.path()});
    EXPECT_EQ(ending.errors, "") << entry.path();
    EXPECT_EQ(ending.status, 0) << entry.path();
  }
}

TEST(AdviceTest, SaysWhereTheItemStands) {
  const TemporaryFolder folder;
  const std::string script = folder.Write("form.tarvo",
                                          "# A form.\n\nTarvoPreEnterText (\n  \"Ann|a\\\"¶b|\" & "
                                          "3\n)\nTarvoDialog ( \"1|Who \\\"?\\\"|OK\" )\n");
  const Ending ending = Tarvo({"--advise", "--answer", "press 1", "run", script});
  EXPECT_TRUE(ending.errors.starts_with(
      "tarvo: " + script +
      ", line 4, column 8: \"a\" b\" is pre-entered for field 2, which the "
      "dialog does not have: it is not shown [text-for-no-field]\n    \"Ann|a\\\"¶b|\" & 3\n       "
      "  ^^^^^\n"
      "tarvo: " +
      script + ", line 4, column 18: \"3\" is pre-entered for field 3"))
      << ending.errors;
}

TEST(AdviceTest, IsChosenByNameAndSilencedByComments) {
  const TemporaryFolder folder;
  const std::string wrong = "TarvoDialog ( \"2|m||OK\" )\n";
  const struct {
    std::string script;
    std::vector<std::string> options;
    Names names;
  } cases[] = {
      {wrong, {}, {"same-buttons", "field-without-label"}},
      {wrong, {"--only", "same"}, {"same-buttons"}},
      {wrong, {"--only", "same", "--only", "*label"}, {"same-buttons", "field-without-label"}},
      {wrong, {"--except", "same-*"}, {"field-without-label"}},
      {"# no advice: same-buttons\n" + wrong, {}, {"field-without-label"}},
      {"# no advice: same-buttons, field-without-label\r\n# Why.\r\n" + wrong, {}, {}},
      {"# no advice: same-buttons\n\n" + wrong, {}, {"same-buttons", "field-without-label"}},
      {"# no advice: same\n" + wrong, {}, {"same-buttons", "field-without-label"}},
      {"// no advice: field-without-label\n" + wrong + "\n" + wrong,
       {"--only", "field*"},
       {"field-without-label"}},
  };
  for (const auto& [script, options, names] : cases) {
    std::vector<std::string> words{"--advise", "--strict",
                                   "--answer", "press 1; press 1",
                                   "run",      folder.Write("form.tarvo", script)};
    words.insert(words.begin(), options.begin(), options.end());
    const Ending ending = Tarvo(words);
    EXPECT_EQ(NamesIn(ending.errors), names) << script << ending.errors;
  }
  const Ending wrong_name = Tarvo({"--advise", "--except", "sam-buttons", "eval", "1"});
  EXPECT_EQ(wrong_name.status, 2);
  EXPECT_TRUE(Holds(wrong_name.errors, "no advice matches \"sam-buttons\"")) << wrong_name.errors;
}

TEST(AdviceTest, IsSaidOnceAndIsAnErrorIfStrict) {
  const TemporaryFolder folder;
  const std::string script = folder.Write("form.tarvo",
                                          "Loop\n  Set Variable [ $i ; $i + 1 ]\n  TarvoDialog ( "
                                          "\"0|m||OK\" )\n  Exit Loop If [ $i = 3 ]\n"
                                          "End Loop\n");
  std::vector<std::string> words{"--answer", "press 1; press 1; press 1", "run", script};
  EXPECT_EQ(Tarvo(words).errors, "") << "is not asked for";
  words.insert(words.begin(), "--advise");
  const Ending told = Tarvo(words);
  EXPECT_EQ(told.status, 0);
  EXPECT_EQ(told.output, "1||||\n1||||\n1||||\n");
  EXPECT_EQ(told.errors.find("same-buttons"), told.errors.rfind("same-buttons")) << told.errors;
  words.insert(words.begin(), "--strict");
  EXPECT_EQ(Tarvo(words).status, 1);
  EXPECT_TRUE(Holds(Tarvo({"repl", "--answer", "press 1"}, "TarvoDialog ( \"0|m||OK\" )\n").errors,
                    "[same-buttons]"));
}

TEST(ExplainTest, SaysWhatEachItemMeans) {
  const TemporaryFolder folder;
  const std::string script =
      folder.Write("form.tarvo",
                   "TarvoPreEnterText ( \"Ann\" )\nTarvoSetCaption ( \"Who\" )\n"
                   "TarvoDialog ( \"2|Name?||No|||First|\" & \"Last|||2|x|y\" )\n");
  const Ending table = Tarvo({"explain", script});
  EXPECT_EQ(table.status, 0) << table.errors;
  EXPECT_EQ(
      table.output.substr(table.output.find(script + ", line 3")),
      script +
          ", line 3, column 1: TarvoDialog\n"
          "   1  the number of fields              \"2\"      a dialog with 2 fields\n"
          "   2  the message                       \"Name?\"\n"
          "   3  button 1                                   says OK; Return presses it\n"
          "   4  button 2                          \"No\"\n"
          "   5  button 3                                   no such button\n"
          "   6  button 4                                   no such button\n"
          "   7  label of field 1                  \"First\"  field 1 is a text field, starts with "
          "\"Ann\", has the focus\n"
          "   8  label of field 2                  \"Last\"   field 2 is a password field, starts "
          "empty\n"
          "   9  label of field 3\n"
          "  10  label of field 4\n"
          "  11  the number of the password field  \"2\"      field 2 hides what is typed\n"
          "  12  not read                          \"x\"      is ignored\n"
          "  13  not read                          \"y\"      is ignored\n"
          "      caption: Who\n");
}

TEST(ExplainTest, SpeaksJsonAndTakesAnswers) {
  using display::Json;
  const Ending ending =
      Tarvo({"--json", "explain", "--strict", "--answer", "press 2",
             "If ( TarvoAlert ( \"1|a||Yes|No\" ) = 2 ; TarvoDialog ( \"0|m||OK\" ) )"});
  EXPECT_EQ(ending.status, 1);
  std::vector<Json> lines;
  std::istringstream stream(ending.output);
  for (std::string line; std::getline(stream, line);) lines.push_back(display::ParseJson(line));
  ASSERT_EQ(lines.size(), 3U) << ending.output;
  EXPECT_EQ(lines[0]["function"], "TarvoAlert");
  EXPECT_EQ(lines[0]["items"][0],
            display::ParseJson(R"({"item": 1, "meaning": "the kind", "text": "1",
      "effect": "a note", "line": 1, "column": 20})"));
  EXPECT_EQ(lines[1]["function"], "TarvoDialog");
  EXPECT_EQ(lines[2]["advice"], "same-buttons");
  EXPECT_EQ(lines[2]["item"], 4);
}

}  // namespace
}  // namespace workbench
