#include "displays/scripted/answers.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "displays/protocol/display_json.h"

namespace {

using display::AnswerError;
using display::ParseAnswers;
using display::ParseAnswerText;

// The answers of a file, as written again.
std::string Lines(const std::string& file) {
  std::string lines;
  for (const auto& answer : ParseAnswers(file)) {
    lines += std::to_string(answer.line) + ":" +
             display::FormatAnswer(answer.action, answer.names) + "\n";
  }
  return lines;
}

TEST(Answers, EveryActionReadsAndWritesBack) {
  EXPECT_EQ(Lines("enter 1 Ann Lee\nenter 2 \nenter 2\ntype  x \nchoose 1 3\nclick 4\nrow 2\n"
                  "row 2 200\nrow+ 3 -7\nrow- 4 \t403\npress 1 \nreturn\nescape\ntab\nclose"),
            "1:enter 1 Ann Lee\n2:enter 2 \n3:enter 2 \n4:type  x \n5:choose 1 3\n6:click 4\n"
            "7:row 2\n8:row 2\n9:row+ 3 -7\n10:row- 4 403\n11:press 1\n12:return\n13:escape\n"
            "14:tab\n15:close\n");
}

TEST(Answers, NamesReadAndWriteBackInQuotesUnlessOneWordDoes) {
  EXPECT_EQ(
      Lines("press OK\npress \"Log in\"\nenter \"Vorname\"  Ann \"B\"\nenter aujourd’hui x\n"
            "choose \"1st\" \"a \\\"b\\\" \\\\\"\nchoose 2 \"Red\"\nclick \t_\nrow \"Pears\"\n"
            "row+ \"Pears\" 300\npress AZ\npress zA\nchoose \"a\"\t1"),
      "1:press OK\n2:press \"Log in\"\n3:enter Vorname  Ann \"B\"\n4:enter aujourd’hui x\n"
      "5:choose \"1st\" \"a \\\"b\\\" \\\\\"\n6:choose 2 \"Red\"\n7:click _\n8:row \"Pears\"\n"
      "9:row+ \"Pears\" 300\n10:press AZ\n11:press zA\n12:choose a 1\n");
}

TEST(Answers, SkipsEmptyLinesAndCommentsAndTakesEveryLineEnd) {
  EXPECT_EQ(Lines("\xEF\xBB\xBF# a comment\r\n\r\nenter 1 # no comment\r\n   \n#\npress 2\r\n"),
            "3:enter 1 # no comment\n6:press 2\n");
  EXPECT_EQ(ParseAnswers("").size(), 0U);
  EXPECT_EQ(ParseAnswerText("enter 1 a b ;press 1; ;").size(), 2U);
  EXPECT_EQ(ParseAnswerText("enter 1 a b ;press 1")[0].action.text, "a b ");
}

// A line break within a text stays in its line.
TEST(Answers, TextsWithLineBreaksReadAndWriteBack) {
  for (const std::string text : {"a\rb", "\ra\r", "\r\r", "; # a", ""}) {
    display::Action action;
    action.kind = display::Action::Kind::kEnter;
    action.number = 1;
    action.text = text;
    const auto answers = ParseAnswers(display::FormatAnswer(action) + "\ntab\n", "file");
    ASSERT_EQ(answers.size(), 2U);
    EXPECT_EQ(answers[0].action.text, text);
    EXPECT_EQ(answers[0].source, "file");
  }
  display::Action typed;
  typed.kind = display::Action::Kind::kType;
  typed.text = "a\nb";
  EXPECT_EQ(display::FormatAnswer(typed), "type a\rb");
}

TEST(Answers, SaysWhatWasExpected) {
  struct {
    const char* line;
    const char* expected;
  } rows[] = {{"push 1", "is no answer; expected one of enter N TEXT, type TEXT"},
              {"press", "expected \"press K\" with whole numbers, or names in double quotes"},
              {"press Log in", "expected \"press K\""},
              {"press \"Log in", "expected \"press K\""},
              {"press \"Log\\", "expected \"press K\""},
              {"enter \"Log\"in", "expected \"enter N TEXT\""},
              {"press 1 2", "expected \"press K\""},
              {"press 1.5", "expected \"press K\""},
              {"enter 1st x", "expected \"enter N TEXT\""},
              {"choose 1", "expected \"choose N ITEM\""},
              {"choose 1 x", "expected \"choose N ITEM\""},
              {"row Pears", "expected \"row R [X]\""},
              {"row", "expected \"row R [X]\""},
              {"row 1 x", "expected \"row R [X]\""},
              {"row 1 2 3", "expected \"row R [X]\""},
              {"tab 1", "expected \"tab\""}};
  for (const auto& row : rows) {
    try {
      ParseAnswers(std::string("tab\n\n") + row.line);
      ADD_FAILURE() << row.line;
    } catch (const AnswerError& error) {
      EXPECT_EQ(error.line(), 3);
      EXPECT_NE(std::string(error.what()).find(row.expected), std::string::npos) << error.what();
    }
  }
}

TEST(Answers, ClampsNumbersBeyond32Bits) {
  EXPECT_EQ(ParseAnswers("row +1 +99999999999")[0].action.x, 2147483647);
  EXPECT_EQ(ParseAnswers("row 1 -99999999999")[0].action.x, -2147483647 - 1);
}

TEST(Seam, DescriptionsAndActionsSurviveTheirJson) {
  display::Control list;
  list.kind = display::ControlKind::kList;
  list.command = "ABCC";
  list.rows = {{"one", "two"}};
  list.multiple = true;
  list.selected = {2};
  display::Control popup;
  popup.kind = display::ControlKind::kPopup;
  popup.items.emplace();
  popup.value = popup.min = popup.max = 1;
  popup.size = 1;
  const display::Description window = display::Window{"title", {1, 2, 3, 4}, {list, popup}};
  const display::Description alert = display::Alert{4, "m", "e", std::nullopt, "No", std::nullopt};
  for (const auto& dialog : {window, alert}) {
    const auto json = display::ToJson(dialog);
    EXPECT_EQ(display::ToJson(display::DescriptionFromJson(json)), json);
  }
  display::Control copy;
  display::SelectionFromJson(display::SelectionToJson(list), copy);
  EXPECT_TRUE(copy.multiple);
  EXPECT_EQ(copy.selected, list.selected);
  for (const auto& answer : ParseAnswers("enter 1 x\nrow- 3 5\nclose")) {
    const auto json = display::ToJson(answer.action);
    EXPECT_EQ(display::ToJson(display::ActionFromJson(json)), json);
  }
  display::Action unnamed;
  unnamed.kind = static_cast<display::Action::Kind>(99);
  EXPECT_ANY_THROW(display::ToJson(unnamed));
  EXPECT_ANY_THROW(display::ActionFromJson(display::ParseJson(R"({"action":"fly"})")));
  EXPECT_ANY_THROW(display::DescriptionFromJson(display::ParseJson(R"({"kind":"page"})")));
}

}  // namespace
