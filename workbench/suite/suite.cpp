#include "workbench/suite/suite.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "workbench/check/report.h"
#include "workbench/files.h"
#include "workbench/interruption.h"
#include "workbench/output.h"
#include "workbench/pattern.h"
#include "workbench/suite/script_process.h"
#include "workbench/suite/test_case.h"

namespace workbench {

using check::Result;
using check::Verdict;
using suite::Outcome;
using suite::ScriptProcess;
using suite::TestCase;

namespace {

std::vector<TestCase> ChooseTests(const Options& options) {
  std::vector<std::string> paths = options.operands;
  if (paths.empty()) paths.emplace_back(".");
  std::vector<TestCase> tests = suite::FindTests(paths);
  std::erase_if(tests, [&](const TestCase& test) {
    const bool is_chosen = options.only.empty() || MatchesAny(test.Name(), options.only);
    return !is_chosen || MatchesAny(test.Name(), options.exclude);
  });
  if (tests.empty()) throw Failure(Status::kUsage, "no test is chosen");
  return tests;
}

// Where the dialogs are drawn if pictures of them are kept.
std::optional<std::string> PicturesOf(const TestCase& test) {
  if (!test.Has(TestCase::kPictures)) return std::nullopt;
  return test.File(TestCase::kNewPictures);
}

// The life of the plug-in in which a test's script runs.
Options OptionsOf(const TestCase& test, const Options& options) {
  Options own;
  own.plugin = options.plugin;
  own.language = options.language;
  own.interface_version = options.interface_version;
  own.command = "run";
  own.operands = {test.File(TestCase::kScript)};
  own.strict = true;
  own.display = DisplayChoice::kScripted;
  if (test.Has(TestCase::kAnswers)) own.answers_file = test.File(TestCase::kAnswers);
  own.passwords = options.passwords;
  own.screenshot = PicturesOf(test);
  return own;
}

std::size_t JobsOf(const Options& options) {
  return options.jobs ? static_cast<std::size_t>(*options.jobs)
                      : std::max(1U, std::thread::hardware_concurrency());
}

// In their order, whichever ends first; each as soon as all before it have ended.
template <class Take>
void RunAll(const std::vector<TestCase>& tests, const Options& options, Take take) {
  std::vector<std::pair<std::size_t, ScriptProcess>> running;
  std::vector<std::optional<Outcome>> outcomes(tests.size());
  std::size_t next = 0;
  for (std::size_t taken = 0; taken < tests.size();) {
    while (next < tests.size() && running.size() < JobsOf(options)) {
      running.emplace_back(next, ScriptProcess(OptionsOf(tests[next], options),
                                               options.timeout.value_or(suite::kTimeLimit)));
      ++next;
    }
    ScriptProcess::WaitForAny(running);
    std::erase_if(running, [&](auto& each) {
      outcomes[each.first] = each.second.TakeOutcome();
      return outcomes[each.first].has_value();
    });
    for (; taken < tests.size() && outcomes[taken]; ++taken) take(tests[taken], *outcomes[taken]);
  }
}

// Test Anything Protocol, version 13.
std::string TapLine(std::size_t number, const TestCase& test, const Result& result) {
  std::string line = (result.verdict == Verdict::kPassed ? "ok " : "not ok ") +
                     std::to_string(number) + " - " + test.Name() + "\n";
  std::string comment = result.message.empty() ? "" : result.message + "\n";
  comment += result.errors;
  for (std::size_t begin = 0; begin < comment.size();) {
    const std::size_t end = std::min(comment.find('\n', begin), comment.size());
    line += "# " + comment.substr(begin, end - begin) + "\n";
    begin = end + 1;
  }
  return line;
}

}  // namespace

Status RunTests(const Options& options) {
  HeedInterruptions();
  const std::vector<TestCase> tests = ChooseTests(options);
  check::Report report(
      options.json, options.failed_only || options.tap,
      [&](std::string_view text) {
        if (options.tap) return;
        options.json ? PrintJson(text) : Print(text);
      },
      "test");
  std::size_t number = 0;
  if (options.tap) Print("TAP version 13\n1.." + std::to_string(tests.size()) + "\n");
  RunAll(tests, options, [&](const TestCase& test, const Outcome& outcome) {
    Result result = suite::Judge(test, outcome);
    if (options.update && outcome.status == 0 && result.verdict == Verdict::kFailed) {
      suite::Keep(test, outcome);
      result.verdict = Verdict::kPassed;
      result.message = "updated: " + result.message;
    }
    report.Add(test.Name(), result);
    if (options.tap) Print(TapLine(++number, test, result));
  });
  report.End();
  if (options.junit) LineFile(*options.junit).Write(report.AsJUnit());
  return report.Failed() == 0 ? Status::kDone : Status::kWrong;
}

Status RecordTest(const Options& options) {
  const TestCase test(*options.record);
  const std::string recording = test.File(".answers.new");
  Options own = options;
  own.command = "run";
  own.operands = {*options.record};
  own.record = recording;
  own.screenshot = PicturesOf(test);
  ScriptProcess process(own, 0);
  std::vector<std::pair<std::size_t, ScriptProcess>> running;
  running.emplace_back(0, std::move(process));
  std::optional<Outcome> outcome;
  while (!outcome) {
    ScriptProcess::WaitForAny(running);
    outcome = running.front().second.TakeOutcome();
  }
  std::fputs(outcome->errors.c_str(), stderr);
  Print(outcome->output);
  if (outcome->status != 0 || outcome->signal != 0) {
    std::filesystem::remove(recording);
    std::filesystem::remove_all(test.File(TestCase::kNewPictures));
    return outcome->status != 0 ? static_cast<Status>(outcome->status) : Status::kWrong;
  }
  std::filesystem::rename(recording, test.File(TestCase::kAnswers));
  suite::Keep(test, *outcome);
  return Status::kDone;
}

}  // namespace workbench
