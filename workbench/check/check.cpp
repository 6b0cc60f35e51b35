#include "workbench/check/check.h"

#include <fnmatch.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <filesystem>
#include <iterator>
#include <vector>

#include "displays/protocol/display_json.h"
#include "platform/corefoundation/CFHost.h"
#include "platform/corefoundation/CoreFoundation.h"
#include "workbench/check/checks.h"
#include "workbench/check/isolation.h"
#include "workbench/check/plugin_under_check.h"

namespace workbench {
namespace {

namespace fs = std::filesystem;

using check::Bundle;
using check::Check;
using check::Result;
using check::Verdict;
using display::TextToJson;

constexpr std::array kVerdicts{"passed", "failed", "crashed", "timed out", "skipped"};

const char* Name(Verdict verdict) { return kVerdicts.at(static_cast<std::size_t>(verdict)); }

Bundle FindModule(const std::string& folder) {
  CFBundleRef const reference = CFBundleCreateWithPath(folder);
  if (reference == nullptr) throw Failure(Status::kBundle, folder + ": there is no such bundle");
  const fs::path module = fs::absolute(CFBundleGetExecutablePath(reference));
  CFRelease(reference);
  if (!fs::is_regular_file(module)) {
    throw Failure(Status::kBundle,
                  folder + ": the bundle has no module; expected " + module.string());
  }
  return {fs::absolute(folder), module};
}

bool Matches(const std::string& name, const std::string& pattern) {
  if (pattern.find_first_of("*?[") == std::string::npos) {
    return name.find(pattern) != std::string::npos;
  }
  return fnmatch(pattern.c_str(), name.c_str(), 0) == 0;
}

// What the functions are called in their order; none if the bundle cannot say.
std::vector<std::string> AskForNames(const Bundle& bundle, std::chrono::milliseconds time_limit) {
  const Result result = check::RunIsolated(
      [&] {
        std::string names;
        for (const std::string& name : check::RegisteredNames(bundle)) names += name + '\0';
        return names;
      },
      time_limit);
  std::vector<std::string> names;
  if (result.verdict != Verdict::kPassed) return names;
  for (std::size_t start = 0; start < result.message.size();) {
    const std::size_t end = result.message.find('\0', start);
    names.push_back(result.message.substr(start, end - start));
    start = end + 1;
  }
  return names;
}

std::vector<Check> ChooseChecks(const Bundle& bundle, const CheckOptions& options) {
  std::vector<Check> chosen;
  for (const auto& checks : {check::BundleChecks(), check::MessageChecks(), check::StringChecks(),
                             check::RegistrationChecks(), check::HostChecks(),
                             check::CallChecks(AskForNames(bundle, options.time_limit))}) {
    std::copy_if(checks.begin(), checks.end(), std::back_inserter(chosen),
                 [&](const Check& check) { return Matches(check.name, options.pattern); });
  }
  return chosen;
}

std::string OneLine(std::string text) {
  std::replace_if(
      text.begin(), text.end(), [](char sign) { return sign == '\n' || sign == '\r'; }, ' ');
  return text;
}

// Results as they are printed, and how many of them there are.
class Report {
 public:
  Report(bool json, const std::function<void(std::string_view)>& print)
      : json_(json), print_(print) {}

  void Add(const std::string& name, const Result& result) {
    ++counts_.at(static_cast<std::size_t>(result.verdict));
    print_(json_ ? JsonEntry(name, result) : Line(name, result));
    first_ = false;
  }

  void End() const {
    if (json_) return print_("\n]\n");
    print_(std::to_string(Count(Verdict::kPassed)) + " passed, " + std::to_string(Failed()) +
           " failed\n");
  }

  int Failed() const {
    return Count(Verdict::kFailed) + Count(Verdict::kCrashed) + Count(Verdict::kTimedOut);
  }

 private:
  int Count(Verdict verdict) const { return counts_.at(static_cast<std::size_t>(verdict)); }

  static std::string Line(const std::string& name, const Result& result) {
    std::string verdict = Name(result.verdict);
    verdict.resize(sizeof "timed out" + 1, ' ');
    const std::string line = verdict + name;
    return OneLine(result.message.empty() ? line : line + ": " + result.message) + "\n";
  }

  // One entry a line.
  std::string JsonEntry(const std::string& name, const Result& result) const {
    return (first_ ? "[\n" : ",\n") + (R"({"check":)" + TextToJson(name)) + R"(,"result":)" +
           TextToJson(Name(result.verdict)) + R"(,"message":)" + TextToJson(result.message) + "}";
  }

  bool json_;
  const std::function<void(std::string_view)>& print_;
  bool first_ = true;
  std::array<int, kVerdicts.size()> counts_{};
};

}  // namespace

Status RunChecks(const CheckOptions& options,
                 const std::function<void(std::string_view text)>& print) {
  const Bundle bundle = FindModule(options.bundle);
  const std::vector<Check> checks = ChooseChecks(bundle, options);
  if (checks.empty()) {
    throw Failure(Status::kUsage, "no check matches \"" + options.pattern + "\"");
  }
  Report report(options.json, print);
  for (const Check& check : checks) {
    const auto body = [&] {
      check.body(bundle);
      return std::string();
    };
    report.Add(check.name, check::RunIsolated(body, options.time_limit));
  }
  report.End();
  return report.Failed() == 0 ? Status::kDone : Status::kWrong;
}

}  // namespace workbench
