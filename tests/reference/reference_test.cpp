// The reference for designers and the localisations, held against the program itself.

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <regex>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "displays/protocol/display_json.h"
#include "tests/support/tarvo.h"

namespace {

using display::Json;
using workbench::Tarvo;

const std::filesystem::path kDocs = PROJECT_SOURCE_DIR "/docs";

std::vector<std::string> LinesOf(const std::filesystem::path& file) {
  std::ifstream stream(file);
  EXPECT_TRUE(stream) << file;
  std::vector<std::string> lines;
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

// Calculations that share one life of the plug-in, what the user does, and what is printed: the
// contents of a test's files.
struct Example {
  std::string name;  // by its line
  std::string answers;
  std::string script;
  std::string expected;
};

std::vector<Example> ReadExamples() {
  constexpr std::string_view kAnswer = "# answer: ";
  std::vector<Example> examples;
  std::string fence;
  int number = 0;
  for (const std::string& line : LinesOf(kDocs / "functions.md")) {
    ++number;
    if (line.starts_with("```")) {
      fence = fence.empty() ? line : "";
      if (fence == "```tarvo") examples.push_back({"line-" + std::to_string(number), {}, {}, {}});
    } else if (fence == "```text") {
      examples.back().expected += line + "\n";
    } else if (fence == "```tarvo" && line.starts_with(kAnswer)) {
      std::string answers = line.substr(kAnswer.size()) + "\n";
      std::ranges::replace(answers, ';', '\n');
      examples.back().answers += answers;
    } else if (fence == "```tarvo") {
      examples.back().script += line + "\n";
    }
  }
  return examples;
}

// What the plug-in says of itself in a language: `command` is functions or info.
Json Ask(const std::string& language, const std::string& command) {
  const auto ending = Tarvo({"--language", language, "--json", command});
  EXPECT_EQ(ending.status, 0) << ending.errors;
  return display::ParseJson(ending.output);
}

std::set<std::string> RegisteredNames() {
  std::set<std::string> names;
  for (const Json& function : Ask("en", "functions")) names.insert(function.at("name"));
  return names;
}

// What a prototype says of its one parameter.
std::string Parameter(const Json& function) {
  const std::string name = function.at("name");
  const std::string prototype = function.at("prototype");
  EXPECT_TRUE(prototype.starts_with(name + "(") && prototype.ends_with(")")) << prototype;
  return prototype.substr(name.size());
}

TEST(Reference, ItsExamplesGiveWhatItSays) {
  const testing_tools::TemporaryFolder folder;
  for (const auto& [name, answers, script, expected] : ReadExamples()) {
    const std::string file = folder.Write(name + ".tarvo", script);
    const std::string answers_file = folder.Write(name + ".answers", answers);
    const auto run = Tarvo({"run", file, "--answers", answers_file, "--advise"});
    EXPECT_EQ(run.output, expected) << name;
    EXPECT_EQ(run.errors, "") << "no advice is needed, " << name;
  }
}

TEST(Reference, EveryFunctionHasAnExample) {
  std::string calculations;
  for (const Example& example : ReadExamples()) calculations += example.script;
  for (const std::string& name : RegisteredNames()) {
    EXPECT_NE(calculations.find(name + " ("), std::string::npos) << name;
  }
}

// A heading may name several functions.
TEST(Reference, EveryFunctionHasASectionAndEverySectionAFunction) {
  const std::regex name("Tarvo\\w+");
  std::set<std::string> headings;
  for (const std::string& line : LinesOf(kDocs / "functions.md")) {
    if (!line.starts_with("### ")) continue;
    for (std::sregex_iterator match(line.begin(), line.end(), name), end; match != end; ++match) {
      headings.insert(match->str());
    }
  }
  EXPECT_EQ(headings, RegisteredNames());
}

// The anchor under which a heading can be linked to.
std::string Anchor(std::string_view heading) {
  std::string anchor;
  heading.remove_prefix(heading.find_first_not_of("# "));
  for (const char sign : heading) {
    if (sign == ' ' || sign == '-') anchor += '-';
    if (std::isalnum(sign)) anchor += static_cast<char>(std::tolower(sign));
  }
  return anchor;
}

TEST(Reference, ItsLinksAndPicturesLeadSomewhere) {
  std::string text;
  std::set<std::string> anchors;
  for (const std::string& line : LinesOf(kDocs / "functions.md")) {
    text += line + "\n";
    if (line.starts_with("#")) anchors.insert("#" + Anchor(line));
  }
  const std::regex link(R"(\]\(([^)]+)\))");
  for (std::sregex_iterator match(text.begin(), text.end(), link), end; match != end; ++match) {
    const std::string target = (*match)[1];
    EXPECT_TRUE(anchors.contains(target) || std::filesystem::is_regular_file(kDocs / target))
        << target;
  }
}

class Localisation : public testing::TestWithParam<const char*> {};

// A prototype that is missing or too long to be loaded registers as an empty one.
TEST_P(Localisation, DescribesEveryParameterInItsOwnWords) {
  const Json english = Ask("en", "functions");
  const Json translated = Ask(GetParam(), "functions");
  ASSERT_EQ(translated.size(), english.size());
  for (std::size_t i = 0; i < english.size(); ++i) {
    EXPECT_EQ(translated[i].at("name"), english[i].at("name"));
    const std::string parameter = Parameter(translated[i]);
    EXPECT_NE(parameter, Parameter(english[i]));
    EXPECT_EQ(std::ranges::count(parameter, '|'), std::ranges::count(Parameter(english[i]), '|'))
        << parameter;
  }
}

TEST_P(Localisation, NamesAndDescribesThePlugin) {
  const Json english = Ask("en", "info");
  const Json translated = Ask(GetParam(), "info");
  EXPECT_EQ(translated.at("options"), "TRVO1nnYnn");
  EXPECT_NE(translated.at("name"), "");
  EXPECT_NE(translated.at("description"), "");
  EXPECT_NE(translated.at("description"), english.at("description"));
}

std::set<std::string> KeysOf(const std::string& language) {
  std::set<std::string> keys;
  const auto file = language + ".lproj/Quenlix.strings";
  for (const std::string& line : LinesOf(kDocs.parent_path() / "plugin/resources" / file)) {
    if (line.starts_with('"')) keys.insert(line.substr(0, line.find('=')));
  }
  return keys;
}

TEST_P(Localisation, HasTheKeysOfTheEnglishTable) { EXPECT_EQ(KeysOf(GetParam()), KeysOf("en")); }

INSTANTIATE_TEST_SUITE_P(All, Localisation, testing::Values("de", "fr", "es", "ja"),
                         [](const auto& language) { return std::string(language.param); });

}  // namespace
