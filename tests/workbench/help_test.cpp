// The man page and the completion name what the help names, and nothing else; the help on functions
// describes those that are registered, and nothing else.

#include <nlohmann/json.hpp>
#include <regex>
#include <set>

#include "calculation/evaluator.h"
#include "calculation/parser.h"
#include "calculation/unicode.h"
#include "displays/protocol/display_json.h"
#include "tests/support/tarvo.h"
#include "workbench/function_help.h"
#include "workbench/repl/history_file.h"
#include "workbench/script.h"

namespace workbench {
namespace {

const std::string kCompletion = std::string(PROJECT_SOURCE_DIR) + "/packaging/tarvo.bash";

std::set<std::string> FindAll(const std::string& text, const std::string& pattern) {
  std::set<std::string> found;
  const std::regex expression(pattern);
  for (std::sregex_iterator match(text.begin(), text.end(), expression), end; match != end;
       ++match) {
    found.insert((*match)[1]);
  }
  return found;
}

std::set<std::string> Commands() {
  const std::string help = Tarvo({"help"}).output;
  const std::size_t start = help.find("Commands:\n");
  return FindAll(help.substr(start, help.find("Options:") - start), "\n  ([a-z]+)");
}

std::set<std::string> LongOptions() {
  const std::string help = Tarvo({"help"}).output;
  return FindAll(help.substr(help.find("Options:")), "--([a-z-]+)");
}

TEST(HelpTest, TheFunctionsThatAreRegisteredAreThoseThatAreDescribed) {
  std::set<std::string> registered;
  for (const auto& function : display::ParseJson(Tarvo({"--json", "functions"}).output)) {
    registered.insert(function["name"]);
  }
  std::set<std::string> described;
  for (const PluginFunctionHelp& function : DescribedPluginFunctions()) {
    described.insert(calculation::ToUtf8(function.name));
  }
  EXPECT_EQ(described, registered);
}

// What bash offers after these words, the last of which the cursor is at.
std::string Complete(const std::string& words, const std::string& folder = "/") {
  const std::string script = "cd " + folder + "; source " + kCompletion + "; COMP_WORDS=(" + words +
                             "); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _tarvo; "
                             "printf '%s ' \"${COMPREPLY[@]}\"";
  const Ending ending = testing_tools::Run({"/bin/bash", {"--norc", "-c", script}});
  EXPECT_EQ(ending.errors, "") << words;
  return ending.output;
}

TEST(HelpTest, TheManPageNamesEveryCommandAndOption) {
  const std::string page = ReadAll(std::string(PROJECT_SOURCE_DIR) + "/docs/tarvo.1");
  EXPECT_GE(Commands().size(), 7u);
  EXPECT_GE(LongOptions().size(), 14u);
  EXPECT_EQ(FindAll(page, "\n\\.It Ic ([a-z]+)"), Commands());
  EXPECT_EQ(FindAll(page, "\n\\.It Fl (?:h , )?-([a-z-]+)"), LongOptions());
}

// "eval calculation", of each command: what help says in capitals and the page in macros.
TEST(HelpTest, TheManPagesSynopsisIsTheHelps) {
  const std::string help = Tarvo({"help"}).output;
  std::string page = ReadAll(std::string(PROJECT_SOURCE_DIR) + "/docs/tarvo.1");
  page = page.substr(0, page.find(".Sh DESCRIPTION"));
  page = std::regex_replace(page, std::regex("\n\\.(Op Ar|Ar)"), "");
  page = std::regex_replace(page, std::regex(" ?\\.\\.\\."), "");
  std::set<std::string> commands;
  const std::regex line("\n  ([a-z]+) ([A-Z.\\[\\]]*) ");
  for (std::sregex_iterator match(help.begin(), help.end(), line), end; match != end; ++match) {
    std::string command = (*match)[1];
    for (const char sign : " " + (*match)[2].str()) {
      if (sign == ' ' || (sign >= 'A' && sign <= 'Z')) command += static_cast<char>(sign | 0x20);
    }
    commands.insert(command.substr(0, command.find_last_not_of(' ') + 1));
  }
  EXPECT_EQ(FindAll(page, "\n\\.Ic ([^\n]+)"), commands);
}

TEST(HelpTest, TheManPageNamesEveryStatus) {
  const std::string page = ReadAll(std::string(PROJECT_SOURCE_DIR) + "/docs/tarvo.1");
  const std::string dialog = "TarvoDialog ( \"0|a|b|c|d|e\" )";
  std::set<std::string> statuses{"130"};  // see InterruptionTest
  for (const std::vector<std::string>& words : std::vector<std::vector<std::string>>{
           {"eval", "1"},
           {"eval", "1+"},
           {"sing"},
           {"--plugin", "/none", "info"},
           {"--display", "scripted", "eval", dialog},
           {"eval", dialog},
           {"--button-status", "--answer", "escape", "eval", "TarvoAllowEscape ( 1 )", dialog},
           {"--button-status", "--answer", "press 1", "eval", dialog},
           {"--button-status", "--answer", "press 2", "eval", dialog},
           {"--button-status", "--answer", "press 3", "eval", dialog},
           {"--button-status", "--answer", "press 4", "eval", dialog}}) {
    statuses.insert(std::to_string(Tarvo(words).status));
  }
  const std::string section = page.substr(page.find(".Sh EXIT STATUS"));
  EXPECT_EQ(FindAll(section, "\n\\.It (?:\\d+ , )*(\\d+)").size(), 8u);
  EXPECT_EQ(FindAll(std::regex_replace(section, std::regex(" , "), "\n.It "), "\n\\.It (\\d+)"),
            statuses);
}

TEST(HelpTest, TheManPageNamesEveryCheckAndLimit) {
  const std::string page = ReadAll(std::string(PROJECT_SOURCE_DIR) + "/docs/tarvo.1");
  std::set<std::string> checks;
  std::istringstream names(Tarvo({"check", "--list"}).output);
  for (std::string name; std::getline(names, name);) checks.insert(name.substr(name.find('/') + 1));
  const std::size_t start = page.find(".Ss CHECKS");
  EXPECT_EQ(FindAll(page.substr(start, page.find(".Sh LIMITS") - start), "\n\\.Li ([^ \n]+)"),
            checks);
  for (const long limit : {static_cast<long>(calculation::kLongestText),
                           static_cast<long>(calculation::Parser::kDeepestNesting),
                           calculation::Evaluator::kMostRounds, ScriptRunner::kMostRounds,
                           static_cast<long>(HistoryFile::kLongest)}) {
    EXPECT_TRUE(Holds(page.substr(page.find(".Sh LIMITS")), " " + std::to_string(limit))) << limit;
  }
}

TEST(HelpTest, TheManPageNamesEveryAnswer) {
  const std::string page = ReadAll(std::string(PROJECT_SOURCE_DIR) + "/docs/tarvo.1");
  const std::string message = Tarvo({"--answer", "sing", "eval", "1"}).errors;
  for (const std::string& word :
       FindAll(message.substr(message.find("one of ") + 5), "[f,] ([a-z+-]+)")) {
    EXPECT_TRUE(Holds(page, " " + word)) << word;
  }
}

TEST(CompletionTest, BashOffersCommandsAndOptions) {
  std::string commands = Complete("tarvo ''") + "\n";
  EXPECT_EQ(FindAll(commands, "([a-z]+) "), Commands());
  EXPECT_EQ(FindAll(Complete("tarvo eval --"), "--([a-z-]+)"), LongOptions());
  EXPECT_EQ(Complete("tarvo ev"), "eval ");
  EXPECT_EQ(Complete("tarvo --answer eval ev"), "eval ") << "that was an argument";
  EXPECT_EQ(Complete("tarvo --answer = eval --json ev"), "eval ");
  EXPECT_EQ(Complete("tarvo help re"), "repl ");
  EXPECT_EQ(Complete("tarvo --json --rec"), "--record --record-passwords --record-numbers ");
}

TEST(CompletionTest, BashOffersWhatOptionsAndCommandsTake) {
  const TemporaryFolder folder;
  folder.Write("form.tarvo", "");
  std::filesystem::create_directories(folder / "Form.fmplugin");
  const auto offered = [&](const std::string& words) { return Complete(words, folder / ""); };
  EXPECT_EQ(offered("tarvo --display s"), "scripted ");
  EXPECT_EQ(offered("tarvo --display = s"), "scripted ");
  EXPECT_EQ(offered("tarvo --display ="), "auto desktop terminal scripted ");
  for (const char* words : {"--plugin", "--screenshot", "check"}) {
    EXPECT_EQ(offered(std::string("tarvo ") + words + " ''"), "Form.fmplugin ") << words;
  }
  for (const char* words : {"run", "explain", "preview", "test", "eval 1 --answers",
                            "eval 1 --record", "eval 1 --describe", "eval 1 --passwords",
                            "test --junit", "--arg run '' run", "eval 1 --args-json"}) {
    EXPECT_EQ(offered(std::string("tarvo ") + words + " f"), "form.tarvo ") << words;
  }
  EXPECT_EQ(offered("tarvo eval f"), " ");
  EXPECT_EQ(offered("tarvo --language f"), " ");
}

}  // namespace
}  // namespace workbench
