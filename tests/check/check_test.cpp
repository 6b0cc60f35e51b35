#include "workbench/check/check.h"

#include <fnmatch.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <string>
#include <thread>
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

display::Json Results(const std::string& bundle, Status expected,
                      const std::vector<std::string>& exclude = {}) {
  return display::ParseJson(OutputOf({.bundles = {bundle},
                                      .exclude = exclude,
                                      .json = true,
                                      .time_limit = std::chrono::minutes(1)},
                                     expected));
}

// What a fault breaks; every other check passes. Those that call functions run only if it breaks
// one of them.
struct Fault {
  std::string name;
  std::vector<std::pair<std::string, std::string>> breaks;  // checks, and their results
  const char* module = BROKEN_PLUGIN;

  // Whether it breaks all that comes later; such a fault proves nothing about single checks.
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
       {{"info-plist", "passed"},
        {"strings-table", "passed"},
        {"exports", "failed"},
        {"load", "failed"},
        {"*", "skipped"}},
       __FILE__,
       true},
      {"crashes-on-load",
       {{"info-plist", "passed"},
        {"*s-table", "passed"},
        {"exports", "passed"},
        {"load", "crashed"},
        {"*", "skipped"}},
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
        {"initialisation", "crashed"},
        {"*", "skipped"}},
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
       {{"initialisation", "failed"},
        {"version-50", "skipped"},
        {"version-255", "skipped"},
        {"[iev]*", "passed"},
        {"strings-table", "passed"},
        {"load", "passed"},
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
      {"blocks-signals", {{"host-state", "failed"}}},
      {"changes-the-folder", {{"host-state", "failed"}}},
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
  const bool breaks_calls =  // such as "Plain/empty"
      fault.all || std::ranges::any_of(fault.breaks, [](const auto& broken) {
        return broken.first.find('/') != std::string::npos;
      });
  const std::vector<std::string> exclude(breaks_calls ? 0 : 1, "/");
  for (const auto& entry : Results(BundleOf(fault.name, fault.module), Status::kWrong, exclude)) {
    EXPECT_EQ(entry.at("result"), ExpectedResult(fault, entry.at("check"))) << entry;
    EXPECT_EQ(entry.at("message") == "", entry.at("result") == "passed") << entry;
  }
}

INSTANTIATE_TEST_SUITE_P(, BrokenPlugin, testing::ValuesIn(Faults()), [](const auto& info) {
  std::string name = info.param.name;
  std::erase(name, '-');
  return name;
});

TEST(Check, NamesEveryExportTooMuch) {
  const std::string output = OutputOf(
      {.bundles = {BundleOf("extra", BROKEN_PLUGIN_WITH_EXTRA_EXPORT)}, .only = {"exports"}},
      Status::kWrong);
  for (const char* name : {" Extra", " Weak"}) EXPECT_TRUE(Holds(output, name)) << output;
}

TEST(Check, PassesQuenlix) {
  for (const auto& entry : Results(PLUGIN_BUNDLE, Status::kDone)) {
    EXPECT_EQ(entry.at("result"), "passed") << entry;
  }
}

// A check that cannot fail is none. Loading fails together with all that comes later.
TEST(Check, PassesASoundPluginAndEveryCheckIsSeenToFail) {
  Results(BundleOf("has-a-configure-button"), Status::kDone);
  for (const auto& entry : Results(BundleOf("sound"), Status::kDone)) {
    EXPECT_EQ(entry.at("result"), "passed") << entry;
    const std::string check = entry.at("check");
    if (check == "load" || check == "initialisation") continue;
    EXPECT_TRUE(std::any_of(Faults().begin(), Faults().end(), [&](const Fault& fault) {
      return !fault.all && ExpectedResult(fault, check) != "passed";
    })) << check;
  }
}

TEST(Check, PrintsALineForEachCheckThatMatches) {
  const std::string bundle = BundleOf("mishandles-parameters");
  const std::string passed = "passed     ";
  const std::string long_texts =
      "failed     Plain/1024-units: expected no exception, got one that says: too long\n"
      "crashed    Plain/1025-units: SIGSEGV\n";
  const struct {
    CheckOptions options;
    Status status;
    std::string output;
  } cases[] = {
      {{.bundles = {bundle}, .only = {"version-2"}},
       Status::kDone,
       passed + "version-255\n" + passed + "version-256\n2 passed, 0 failed\n"},
      {{.bundles = {bundle}, .only = {"P*/1?2*"}},
       Status::kWrong,
       long_texts + "0 passed, 2 failed\n"},
      {{.bundles = {bundle},
        .only = {"version-2", "P*/1?2*"},
        .exclude = {"256"},
        .failed_only = true},
       Status::kWrong,
       long_texts + "1 passed, 2 failed\n"},
      {{.bundles = {BundleOf("sound"), bundle}, .only = {"Plain/1024"}},
       Status::kWrong,
       BundleOf("sound") + ":\n" + passed + "Plain/1024-units\n" + bundle + ":\n" +
           long_texts.substr(0, long_texts.find('\n') + 1) + "1 passed, 1 failed\n"},
      {{.bundles = {BundleOf("sound")}, .only = {"version-49"}, .in_process = true},
       Status::kDone,
       passed + "version-49\n1 passed, 0 failed\n"},
      {{.bundles = {BundleOf("never-returns")},
        .only = {"Plain/returns"},
        .time_limit = std::chrono::milliseconds(3500)},
       Status::kWrong,
       "timed out  Plain/returns: expected an end within 3.5 s\n0 passed, 1 failed\n"},
      {{.bundles = {BundleOf("no-arguments")}, .only = {"Plain/e"}},
       Status::kDone,
       "skipped    Plain/empty: the function takes no parameter\n0 passed, 0 failed\n"},
      {{.bundles = {BundleOf("crashes-on-load")}, .only = {"Plain", "string-128"}},
       Status::kDone,
       "skipped    string-128: it builds on load, which crashed\n0 passed, 0 failed\n"},
  };
  for (const auto& [options, status, output] : cases) {
    EXPECT_EQ(OutputOf(options, status), output);
  }
}

TEST(Check, WritesJUnit) {
  std::string xml;
  OutputOf({.bundles = {BundleOf("mishandles-parameters")},
            .only = {"Plain/1024", "Plain/1025", "version-49"},
            .junit = [&](std::string_view written) { xml = written; }},
           Status::kWrong);
  EXPECT_TRUE(Holds(xml, " tests=\"3\" failures=\"1\" errors=\"1\" skipped=\"0\" time=\"")) << xml;
  EXPECT_TRUE(Holds(xml, "name=\"version-49\" time=\"")) << xml;
  EXPECT_TRUE(
      Holds(xml, "><failure message=\"expected no exception, got one that says: too long\"/>"))
      << xml;
  EXPECT_TRUE(Holds(xml, "><error type=\"crashed\" message=\"SIGSEGV\"/></testcase>")) << xml;
  EXPECT_TRUE(xml.ends_with("</testsuite>\n</testsuites>\n")) << xml;
}

// And nothing that the plug-in starts outlives its check.
TEST(Check, ShowsWhatIsWrittenToStandardError) {
  const auto results = display::ParseJson(
      OutputOf({.bundles = {BundleOf("starts-a-process")}, .only = {"Plain/empty"}, .json = true},
               Status::kDone));
  const std::string errors = results[0]["errors"];
  EXPECT_GT(results[0]["seconds"], 0);
  ASSERT_TRUE(errors.starts_with("started ")) << errors;
  const std::string file = "/proc/" + errors.substr(8, errors.find('\n') - 8) + "/stat";
  const auto is_alive = [&] {
    const std::string stat = ReadAll(file);
    return !stat.empty() && !Holds(stat, ") Z ");
  };
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
  while (is_alive() && std::chrono::steady_clock::now() < deadline) {
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  EXPECT_FALSE(is_alive());
  EXPECT_TRUE(Holds(
      OutputOf({.bundles = {BundleOf("starts-a-process")}, .only = {"Plain/empty"}}, Status::kDone),
      "passed     Plain/empty\n           | started "));
}

TEST(Check, ExplainsEveryCheck) {
  for (const std::string& name : CheckNames({.bundles = {PLUGIN_BUNDLE}})) {
    const std::string text = ExplainCheck(name);
    EXPECT_TRUE(text.starts_with(name + "\n  ")) << text;
    EXPECT_GT(text.size(), name.size() + 40) << text;
  }
  EXPECT_THROW(ExplainCheck("string-127"), Failure);
  EXPECT_THROW(ExplainCheck("Plain/nothing"), Failure);
}

TEST(Check, RefusesWhatIsNoBundleAndWhatMatchesNothing) {
  const auto refusal = [](const std::string& bundle, const std::string& pattern) {
    try {
      OutputOf({.bundles = {bundle}, .only = {pattern}}, Status::kDone);
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
