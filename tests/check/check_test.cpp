#include "workbench/check/check.h"

#include <fnmatch.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <string>
#include <utility>
#include <vector>

#include "displays/protocol/display_json.h"
#include "tests/support/tarvo.h"

namespace workbench {
namespace {

// A bundle whose module, a copy of `module`, is named after its fault.
std::string BundleOf(const std::string& fault, const std::string& module = BROKEN_PLUGIN) {
  static const TemporaryFolder folder;
  std::filesystem::remove_all(folder / (fault + ".fmplugin"));
  const std::string bundle = MakeBundle(folder, fault, module);
  const std::string contents = bundle + "/Contents/";
  std::filesystem::create_directories(contents + "Resources/en.lproj");
  if (fault != "no-info") std::ofstream(contents + "Info.plist") << "<plist/>";
  if (fault != "no-table") std::ofstream(contents + "Resources/en.lproj/Broken.strings") << "";
  return bundle;
}

std::string OutputOf(const CheckOptions& options, Status expected) {
  std::string output;
  EXPECT_EQ(RunChecks(options, [&](std::string_view text) { output += text; }), expected) << output;
  return output;
}

display::Json Results(const std::string& bundle, Status expected) {
  return display::Json::parse(OutputOf(
      {.bundle = bundle, .pattern = "", .json = true, .time_limit = std::chrono::minutes(1)},
      expected));
}

// What a fault breaks; every other check passes.
struct Fault {
  std::string name;
  std::vector<std::pair<std::string, std::string>> breaks;  // checks, and their results
  const char* module = BROKEN_PLUGIN;

  // Where it breaks all that comes later, it says nothing of the single checks.
  bool all = false;
};

void PrintTo(const Fault& fault, std::ostream* out) { *out << fault.name; }

bool Matches(const std::string& pattern, const std::string& name) {
  return fnmatch(pattern.c_str(), name.c_str(), 0) == 0;
}

std::string ExpectedResult(const Fault& fault, const std::string& check) {
  for (const auto& [pattern, result] : fault.breaks) {
    if (Matches(pattern, check)) return result;
  }
  return "passed";
}

const std::vector<Fault>& Faults() {
  static const std::vector<Fault> faults{
      {"no-info", {{"info-plist", "failed"}}},
      {"no-table", {{"strings-table", "failed"}}},
      {"exports-too-much", {{"exports", "failed"}}, BROKEN_PLUGIN_WITH_EXTRA_EXPORT},
      {"exports-too-little",
       {{"exports", "failed"}, {"latest-call", "failed"}},
       BROKEN_PLUGIN_WITHOUT_LATEST_CALL},
      {"no-module",
       {{"info-plist", "passed"}, {"strings-table", "passed"}, {"*", "failed"}},
       __FILE__,
       true},
      {"crashes-on-load",
       {{"info-plist", "passed"}, {"*s-table", "passed"}, {"exports", "passed"}, {"*", "crashed"}},
       BROKEN_PLUGIN,
       true},
      {"crashes-on-init",
       {{"info-plist", "passed"},
        {"*s-table", "passed"},
        {"exports", "passed"},
        {"load", "passed"},
        {"version-49", "passed"},
        {"version-256", "passed"},
        {"version-m*", "passed"},
        {"*", "crashed"}},
       BROKEN_PLUGIN,
       true},
      {"accepts-any-version",
       {{"version-49", "failed"}, {"version-256", "failed"}, {"version-minus*", "failed"}}},
      {"refuses-50", {{"version-50", "failed"}}},
      {"refuses-255", {{"version-255", "failed"}}},
      {"registers-when-refusing",
       {{"version-49", "failed"}, {"version-256", "failed"}, {"version-minus*", "failed"}}},
      {"answers-in-half-the-field",
       {{"version-49", "failed"}, {"version-256", "failed"}, {"version-minus*", "failed"}}},
      {"answers-unknown-messages", {{"unknown-messages", "failed"}}},
      {"writes-beside-its-answer", {{"known-messages", "failed"}}},
      {"answers-a-shutdown", {{"known-messages", "failed"}}},
      {"forgets-the-latest-call", {{"latest-call", "failed"}}},
      {"no-name", {{"string-128", "failed"}}},
      {"terminates-no-string", {{"string-1*", "failed"}, {"options", "failed"}}},
      {"spares-too-little", {{"string-1*", "failed"}}},
      {"spares-too-much", {{"string-1*", "failed"}}},
      {"writes-past-the-buffer", {{"string-1*", "failed"}}},
      {"writes-into-null", {{"string-1*", "crashed"}}},
      {"touches-tiny-buffers", {{"string-1*", "failed"}, {"string-absent", "failed"}}},
      {"answers-absent-strings", {{"string-absent", "failed"}}},
      {"wrong-options", {{"options", "failed"}}},
      {"refuses-all",
       {{"version-50", "failed"},
        {"version-255", "failed"},
        {"functions", "failed"},
        {"second-life", "failed"},
        {"[iekv]*", "passed"},
        {"strings-table", "passed"},
        {"l*", "passed"},
        {"*", "skipped"}},
       BROKEN_PLUGIN,
       true},
      {"no-functions",
       {{"functions", "failed"}, {"version-50", "failed"}, {"version-255", "failed"}}},
      {"registers-twice", {{"function-ids", "failed"}}},
      {"two-plugin-ids", {{"function-plugin-id", "failed"}, {"options", "failed"}}},
      {"one-name-twice", {{"function-names", "failed"}}},
      {"nameless-prototype", {{"function-prototypes", "failed"}}},
      {"no-arguments", {{"function-arguments", "failed"}, {"*/*", "skipped"}}},
      {"no-flags", {{"function-flags", "failed"}}},
      {"stays-registered", {{"shutdown", "failed"}}},
      {"leaves-a-value", {{"shutdown", "failed"}}},
      {"lives-once", {{"second-life", "failed"}}},
      {"sets-the-locale", {{"host-state", "failed"}}},
      {"catches-signals", {{"host-state", "failed"}}},
      {"mishandles-parameters",
       {{"Plain/1025-units", "crashed"},
        {"Plain/100000-units", "crashed"},
        {"Plain/items", "crashed"},
        {"Plain/*", "failed"}}},
      {"ignores-button-1", {{"List/*", "failed"}}},
      {"leaves-its-window", {{"List/*", "failed"}}},
  };
  return faults;
}

class BrokenPlugin : public testing::TestWithParam<Fault> {};

TEST_P(BrokenPlugin, FailsTheChecksThatItBreaksAndPassesTheOthers) {
  const Fault& fault = GetParam();
  for (const auto& entry : Results(BundleOf(fault.name, fault.module), Status::kWrong)) {
    EXPECT_EQ(entry.at("result"), ExpectedResult(fault, entry.at("check"))) << entry;
    EXPECT_EQ(entry.at("message") == "", entry.at("result") == "passed") << entry;
  }
}

INSTANTIATE_TEST_SUITE_P(, BrokenPlugin, testing::ValuesIn(Faults()), [](const auto& info) {
  std::string name = info.param.name;
  std::erase(name, '-');
  return name;
});

TEST(Check, PassesQuenlix) {
  for (const auto& entry : Results(PLUGIN_BUNDLE, Status::kDone)) {
    EXPECT_EQ(entry.at("result"), "passed") << entry;
  }
}

// A check that cannot fail is none. Loading fails together with all that comes later.
TEST(Check, PassesASoundPluginAndEveryCheckIsSeenToFail) {
  for (const auto& entry : Results(BundleOf("sound"), Status::kDone)) {
    EXPECT_EQ(entry.at("result"), "passed") << entry;
    const std::string check = entry.at("check");
    if (check == "load") continue;
    EXPECT_TRUE(std::any_of(Faults().begin(), Faults().end(), [&](const Fault& fault) {
      return !fault.all && ExpectedResult(fault, check) != "passed";
    })) << check;
  }
}

TEST(Check, PrintsALineForEachCheckThatMatches) {
  const std::string bundle = BundleOf("mishandles-parameters");
  const std::string passed = "passed     ";
  EXPECT_EQ(OutputOf({.bundle = bundle, .pattern = "version-2"}, Status::kDone),
            passed + "version-255\n" + passed + "version-256\n2 passed, 0 failed\n");
  EXPECT_EQ(OutputOf({.bundle = bundle, .pattern = "P*/1?2*"}, Status::kWrong),
            "failed     Plain/1024-units: expected no exception, got one that says: too long\n"
            "crashed    Plain/1025-units: SIGSEGV\n0 passed, 2 failed\n");
  EXPECT_EQ(OutputOf({.bundle = BundleOf("never-returns"),
                      .pattern = "Plain/returns",
                      .time_limit = std::chrono::milliseconds(3500)},
                     Status::kWrong),
            "timed out  Plain/returns: expected an end within 3.5 s\n0 passed, 1 failed\n");
  EXPECT_EQ(OutputOf({.bundle = BundleOf("no-arguments"), .pattern = "Plain/e"}, Status::kDone),
            "skipped    Plain/empty: the function takes no parameter\n"
            "0 passed, 0 failed\n");
}

TEST(Check, RefusesWhatIsNoBundleAndWhatMatchesNothing) {
  const auto refusal = [](const std::string& bundle, const std::string& pattern) {
    try {
      OutputOf({.bundle = bundle, .pattern = pattern}, Status::kDone);
    } catch (const Failure& failure) {
      return std::pair(failure.status(), std::string(failure.what()));
    }
    return std::pair(Status::kDone, std::string());
  };
  EXPECT_EQ(refusal("/nowhere", ""),
            std::pair(Status::kBundle, std::string("/nowhere: there is no such bundle")));
  EXPECT_EQ(refusal(testing::TempDir(), "").first, Status::kBundle);
  EXPECT_EQ(refusal(PLUGIN_BUNDLE, "nothing"),
            std::pair(Status::kUsage, std::string("no check matches \"nothing\"")));
}

}  // namespace
}  // namespace workbench
