#include "workbench/check/check.h"

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <iterator>
#include <map>
#include <string>

#include "calculation/nearest.h"
#include "platform/corefoundation/CFHost.h"
#include "platform/corefoundation/CoreFoundation.h"
#include "workbench/check/checks.h"
#include "workbench/check/contract.h"
#include "workbench/check/isolation.h"
#include "workbench/check/plugin_under_check.h"
#include "workbench/check/report.h"
#include "workbench/pattern.h"

namespace workbench {
namespace {

namespace fs = std::filesystem;

using check::Bundle;
using check::Check;
using check::Result;
using check::Verdict;

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

bool IsChosen(const std::string& name, const CheckOptions& options) {
  return (options.only.empty() || MatchesAny(name, options.only)) &&
         !MatchesAny(name, options.exclude);
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

// The checks of one bundle. Each runs once at most.
class Checks {
 public:
  Checks(const Bundle& bundle, const CheckOptions& options) : bundle_(bundle), options_(options) {
    for (auto& group : {check::BundleChecks(), check::MessageChecks(), check::StringChecks(),
                        check::RegistrationChecks(), check::HostChecks(),
                        check::CallChecks(AskForNames(bundle, options.time_limit))}) {
      std::copy(group.begin(), group.end(), std::back_inserter(checks_));
    }
  }

  std::vector<std::string> ChosenNames() const {
    std::vector<std::string> names;
    for (const Check& check : checks_) {
      if (IsChosen(check.name, options_)) names.push_back(check.name);
    }
    return names;
  }

  // Says which of those that it builds on has not passed, if one has not.
  const Result& ResultOf(const std::string& name) {
    const auto known = results_.find(name);
    if (known != results_.end()) return known->second;
    const std::string needed(check::FindClause(name)->needs);
    if (!needed.empty()) {
      const Result& basis = ResultOf(needed);
      if (basis.verdict == Verdict::kSkipped) return results_[name] = basis;
      if (basis.verdict != Verdict::kPassed) {
        return results_[name] = {Verdict::kSkipped, "it builds on " + needed + ", which " +
                                                        check::Name(basis.verdict)};
      }
    }
    return results_[name] = Run(name);
  }

 private:
  Result Run(const std::string& name) const {
    const auto check = std::find_if(checks_.begin(), checks_.end(),
                                    [&](const Check& each) { return each.name == name; });
    const auto body = [&] {
      check->body(bundle_);
      return std::string();
    };
    return options_.in_process ? check::RunHere(body)
                               : check::RunIsolated(body, options_.time_limit);
  }

  Bundle bundle_;
  const CheckOptions& options_;
  std::vector<Check> checks_;
  std::map<std::string, Result> results_;
};

std::string Listed(const std::vector<std::string>& patterns) {
  std::string list;
  for (const std::string& pattern : patterns)
    list += (list.empty() ? "\"" : ", \"") + pattern + "\"";
  return list;
}

// Throws Failure if there are none.
std::vector<std::string> ChosenNames(const Checks& checks, const CheckOptions& options) {
  std::vector<std::string> names = checks.ChosenNames();
  if (!names.empty()) return names;
  throw Failure(Status::kUsage, options.exclude.empty()
                                    ? "no check matches " + Listed(options.only)
                                    : "every check is excluded by " + Listed(options.exclude));
}

std::string Wrapped(std::string_view text) {
  constexpr std::size_t kWidth = 90;
  std::string lines;
  while (text.size() > kWidth) {
    const std::size_t end = text.rfind(' ', kWidth);
    lines += "  " + std::string(text.substr(0, end)) + "\n";
    text.remove_prefix(end + 1);
  }
  return lines + "  " + std::string(text) + "\n";
}

}  // namespace

Status RunChecks(const CheckOptions& options,
                 const std::function<void(std::string_view text)>& print) {
  std::vector<Bundle> bundles;
  for (const std::string& path : options.bundles) bundles.push_back(FindModule(path));
  check::Report report(options.json, options.failed_only, print);
  for (std::size_t i = 0; i < bundles.size(); ++i) {
    Checks checks(bundles[i], options);
    const std::vector<std::string> names = ChosenNames(checks, options);
    report.Begin(options.bundles[i], bundles.size() > 1);
    for (const std::string& name : names) report.Add(name, checks.ResultOf(name));
  }
  report.End();
  if (options.junit) options.junit(report.AsJUnit());
  return report.Failed() == 0 ? Status::kDone : Status::kWrong;
}

std::vector<std::string> CheckNames(const CheckOptions& options) {
  return ChosenNames(Checks(FindModule(options.bundles.front()), options), options);
}

std::string ExplainCheck(const std::string& name) {
  if (const auto* const clause = check::FindClause(name)) {
    const std::string needs(clause->needs);
    return name + "\n" + Wrapped(clause->text) +
           (needs.empty() ? "" : "  It builds on " + needs + ".\n");
  }
  std::vector<std::string> names;
  for (const auto& clause : check::Clauses()) names.emplace_back(clause.check);
  throw Failure(Status::kUsage, "there is no check " + name + calculation::Suggestion(name, names));
}

}  // namespace workbench
