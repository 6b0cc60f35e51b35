#include "workbench/suite/test_case.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>
#include <utility>

#include "displays/protocol/display_json.h"
#include "workbench/failure.h"
#include "workbench/files.h"
#include "workbench/suite/look.h"

namespace workbench::suite {
namespace {

namespace fs = std::filesystem;

using check::Result;
using check::Verdict;
using display::Json;

std::vector<std::string> LinesOf(const std::string& text) {
  std::istringstream stream(text);
  std::vector<std::string> lines;
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

// The lines between what both begin and end with: "- " what was expected, "+ " what came.
std::string Difference(const std::string& expected, const std::string& came) {
  const std::vector<std::string> old_lines = LinesOf(expected);
  const std::vector<std::string> new_lines = LinesOf(came);
  const std::size_t least = std::min(old_lines.size(), new_lines.size());
  std::size_t first = 0;
  while (first < least && old_lines[first] == new_lines[first]) ++first;
  std::size_t after = 0;
  while (after < least - first && *(old_lines.rbegin() + static_cast<std::ptrdiff_t>(after)) ==
                                      *(new_lines.rbegin() + static_cast<std::ptrdiff_t>(after))) {
    ++after;
  }
  std::string difference = "line " + std::to_string(first + 1) + ":\n";
  for (std::size_t i = first; i + after < old_lines.size(); ++i) {
    difference += "- " + old_lines[i] + "\n";
  }
  for (std::size_t i = first; i + after < new_lines.size(); ++i) {
    difference += "+ " + new_lines[i] + "\n";
  }
  return difference;
}

// With the controls by their kinds and numbers instead of in a row, so that one that is gone makes
// no difference to those behind it.
Json ByName(Json dialog) {
  Json controls = Json::object();
  for (Json& control : dialog.value("controls", Json::array())) {
    const std::string name =
        control.value("kind", "") + " " + std::to_string(control.value("id", 0));
    controls[name] = std::move(control);
  }
  dialog["controls"] = std::move(controls);
  return dialog;
}

// A value for people: of a control its text, nothing if there is no value.
std::string ShownValue(const Json& whole, const Json::json_pointer& place) {
  if (!whole.contains(place)) return "nothing";
  const Json& value = whole.at(place);
  return display::ToText(value.is_object() && value.contains("text") ? value.at("text") : value);
}

// "dialog 2, /controls/button 200/text: "OK", now "Save"".
std::string DifferenceOf(std::size_t number, const Json& kept, const Json& came) {
  std::string difference;
  for (const Json& change : Json::diff(kept, came)) {
    const std::string path = change.at("path");
    const Json::json_pointer place(path);
    difference += "dialog " + std::to_string(number) + ", " + path + ": " +
                  ShownValue(kept, place) + ", now " + ShownValue(came, place) + "\n";
  }
  return difference;
}

std::string DifferenceOfDialogs(const std::string& kept, const std::string& came) {
  const std::vector<std::string> old_dialogs = LinesOf(kept);
  const std::vector<std::string> new_dialogs = LinesOf(came);
  std::string difference;
  for (std::size_t i = 0; i < std::min(old_dialogs.size(), new_dialogs.size()); ++i) {
    const Json old_dialog = display::ParseJsonOrDiscard(old_dialogs[i]);
    if (!old_dialog.is_object()) return "dialog " + std::to_string(i + 1) + " is no JSON\n";
    difference +=
        DifferenceOf(i + 1, ByName(old_dialog), ByName(display::ParseJson(new_dialogs[i])));
  }
  if (old_dialogs.size() != new_dialogs.size()) {
    difference += std::to_string(old_dialogs.size()) + " dialogs, now " +
                  std::to_string(new_dialogs.size()) + "\n";
  }
  return difference;
}

// Of what was kept with what came: results, descriptions, pictures.
void Compare(const TestCase& test, const Outcome& outcome, Result& result) {
  const auto note = [&](const char* message, const std::string& difference) {
    if (difference.empty()) return;
    if (result.verdict == Verdict::kPassed) result.message = message;
    result.verdict = Verdict::kFailed;
    result.errors += difference;
  };
  const std::string expected = ReadFile(test.File(TestCase::kExpected));
  note("the results are others than expected",
       expected == outcome.output ? "" : Difference(expected, outcome.output));
  if (test.Has(TestCase::kDialogs)) {
    note("the dialogs are others than they were",
         DifferenceOfDialogs(ReadFile(test.File(TestCase::kDialogs)), outcome.dialogs));
  }
  if (test.Has(TestCase::kPictures)) {
    note("the dialogs look different than they did",
         DifferenceOfPictures(test.File(TestCase::kPictures), test.File(TestCase::kNewPictures)));
  }
}

void WriteFile(const std::string& path, const std::string& content) {
  std::ofstream file(path, std::ios::binary);
  if (!(file << content << std::flush)) throw Failure(Status::kUsage, "cannot write " + path);
}

bool IsTest(const fs::path& path) {
  return path.extension() == TestCase::kScript && TestCase(path).Has(TestCase::kExpected);
}

void AddFolder(const fs::path& folder, std::vector<fs::path>& scripts) {
  for (const auto& entry : fs::recursive_directory_iterator(folder)) {
    if (IsTest(entry.path())) scripts.push_back(entry.path());
  }
}

}  // namespace

std::string TestCase::Name() const { return fs::path(script_).replace_extension().string(); }

std::string TestCase::File(const std::string& ending) const {
  return fs::path(script_).replace_extension(ending).string();
}

std::vector<TestCase> FindTests(const std::vector<std::string>& paths) {
  std::vector<TestCase> tests;
  for (const std::string& path : paths) {
    std::vector<fs::path> scripts;
    if (fs::is_directory(path)) {
      AddFolder(path, scripts);
    } else if (fs::exists(path)) {
      scripts.emplace_back(path);
    } else {
      throw Failure(Status::kUsage, "there is no " + path);
    }
    std::sort(scripts.begin(), scripts.end());
    for (fs::path& script : scripts) tests.emplace_back(std::move(script));
  }
  if (tests.empty()) {
    throw Failure(Status::kUsage,
                  "there are no tests: no NAME.tarvo with a NAME.expected beside it");
  }
  return tests;
}

Result Judge(const TestCase& test, const Outcome& outcome) {
  Result result{Verdict::kPassed, "", outcome.errors, outcome.seconds};
  if (outcome.timed_out) {
    result.verdict = Verdict::kTimedOut;
  } else if (outcome.signal != 0) {
    result.verdict = Verdict::kCrashed;
    result.message = strsignal(outcome.signal);
  } else if (outcome.status != 0) {
    result.verdict = Verdict::kFailed;
    result.message = "it ended with status " + std::to_string(outcome.status);
  } else if (!test.Has(TestCase::kExpected)) {
    result.verdict = Verdict::kFailed;
    result.message = "there is no " + test.File(TestCase::kExpected) + "; --update writes it";
  } else {
    Compare(test, outcome, result);
  }
  return result;
}

void Keep(const TestCase& test, const Outcome& outcome) {
  WriteFile(test.File(TestCase::kExpected), outcome.output);
  if (test.Has(TestCase::kDialogs)) WriteFile(test.File(TestCase::kDialogs), outcome.dialogs);
  if (test.Has(TestCase::kPictures)) {
    KeepPictures(test.File(TestCase::kPictures), test.File(TestCase::kNewPictures));
  }
}

}  // namespace workbench::suite
