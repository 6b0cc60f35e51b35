// Scripts as tests, each a file with others beside it.

#include <nlohmann/json.hpp>
#include <utility>

#include "displays/protocol/display_json.h"
#include "tests/support/tarvo.h"

namespace workbench {
namespace {

using display::Json;

constexpr const char* kDialog = "TarvoDialog ( \"0|Ready?|Yes|No\" )\n";

// A folder with a test NAME: its files by their endings.
void WriteTest(const TemporaryFolder& folder, const std::string& name,
               const std::vector<std::pair<std::string, std::string>>& files) {
  for (const auto& [ending, content] : files) folder.Write(name + ending, content);
}

// What --describe writes of a calculation's dialogs.
std::string DescriptionsOf(const std::string& calculation) {
  const TemporaryFolder folder;
  Tarvo({"--describe", folder / "d", "--answer", "press 1", "eval", calculation});
  return ReadAll(folder / "d");
}

// Of a PNG file, from its header.
int WidthOf(const std::string& png) {
  int width = 0;
  for (std::size_t i = 16; i < 20; ++i) width = width * 256 + static_cast<unsigned char>(png.at(i));
  return width;
}

TEST(SuiteTest, ATestFailsOnWhatIsNotExpected) {
  const struct {
    std::vector<std::pair<std::string, std::string>> files;
    const char* output;
    const char* timeout = "30";
  } cases[] = {
      {{{".tarvo", kDialog}, {".answers", "press No\n"}, {".expected", "2||||\n"}}, "passed     "},
      {{{".tarvo", "1 + 1\n2\n3\n"}, {".expected", "2\n5\n6\n3\n"}},
       ": the results are others than expected\n           | line 2:\n           | - 5\n"
       "           | - 6\n           | + 2\n"},
      {{{".tarvo", kDialog}, {".answers", "press 1\npress 1\n"}, {".expected", "1||||\n"}},
       ": it ended with status 4\n           | tarvo: "},
      {{{".tarvo", kDialog}, {".expected", "1||||\n"}}, "there is no answer left\n"},
      {{{".tarvo", kDialog}, {".answers", "press Maybe\n"}, {".expected", "1||||\n"}},
       "there is no button \"Maybe\""},
      {{{".tarvo", kDialog},
        {".answers", "# dialog 1: Steady?\npress 1\n"},
        {".expected", "1||||\n"}},
       "was recorded for the dialog \"Steady?\""},
      {{{".tarvo", kDialog},
        {".answers", "press 1\n"},
        {".expected", "1||||\n"},
        {".dialogs", DescriptionsOf(kDialog)}},
       "passed     "},
      {{{".tarvo", "TarvoDialog ( \"0|Ready?|Yes\" )\n"},
        {".answers", "press 1\n"},
        {".expected", "1||||\n"},
        {".dialogs", DescriptionsOf(kDialog)}},
       "were\n           | dialog 1, /controls/button 201: \"No\", now nothing\n0 passed"},
      {{{".tarvo", "1\n"}, {".expected", "1\n"}, {".dialogs", DescriptionsOf(kDialog)}},
       "| 1 dialogs, now 0\n"},
      {{{".tarvo", "1 +\n"}, {".expected", "1\n"}}, ": it ended with status 1\n"},
      {{{".tarvo", "While ( [ i = 0 ] ; i < 9000000 ; [ i = i + 1 ] ; i )\n"}, {".expected", ""}},
       "timed out  ",
       "1"},
  };
  for (const auto& [files, output, timeout] : cases) {
    const TemporaryFolder folder;
    WriteTest(folder, "form", files);
    const bool passes = std::string(output) == "passed     ";
    const Ending ending = Tarvo({"test", "--timeout", timeout, folder / ""});
    EXPECT_EQ(ending.status, passes ? 0 : 1) << ending.output << ending.errors;
    EXPECT_TRUE(Holds(ending.output, output)) << ending.output;
    EXPECT_TRUE(ending.output.ends_with(passes ? "1 passed, 0 failed\n" : "0 passed, 1 failed\n"))
        << ending.output;
  }
}

// Tests of a folder and below it, in their order however many run at a time, each in a life of the
// plug-in of its own.
TEST(SuiteTest, TestsAreFoundChosenAndReported) {
  const TemporaryFolder folder;
  WriteTest(folder, "b", {{".tarvo", "TarvoLastValue ( \"\" )\n"}, {".expected", "||||\n"}});
  WriteTest(folder, "a", {{".tarvo", kDialog}, {".answers", "press 1"}, {".expected", "1||||\n"}});
  std::filesystem::create_directories(folder / "more");
  WriteTest(folder, "more/wrong", {{".tarvo", "\"<&\"\n"}, {".expected", "1\n"}});
  folder.Write("no-test.tarvo", "1 +");
  const std::string base = folder / "";
  const Ending ending = Tarvo({"test", base, "--jobs", "3"});
  EXPECT_EQ(ending.status, 1);
  EXPECT_TRUE(ending.output.starts_with("passed     " + base + "a\npassed     " + base +
                                        "b\nfailed     " + base + "more/wrong: the results"))
      << ending.output;
  EXPECT_TRUE(ending.output.ends_with("2 passed, 1 failed\n"));
  EXPECT_EQ(Tarvo({"test", base, "--exclude", "wrong"}).status, 0);
  EXPECT_TRUE(
      Holds(Tarvo({"test", base, "--only", "*/a", "--only", "/b"}).output, "2 passed, 0 failed\n"));
  EXPECT_EQ(Tarvo({"test", folder / "a.tarvo"}).output,
            "passed     " + base + "a\n1 passed, 0 failed\n");

  const Json array = display::ParseJson(Tarvo({"--json", "test", base}).output);
  ASSERT_EQ(array.size(), 3U);
  EXPECT_EQ(array[2]["test"], base + "more/wrong");
  EXPECT_EQ(array[2]["result"], "failed");
  const std::string tap = Tarvo({"test", "--tap", base}).output;
  EXPECT_TRUE(tap.starts_with("TAP version 13\n1..3\nok 1 - " + base + "a\nok 2 - " + base +
                              "b\nnot ok 3 - " + base + "more/wrong\n# the results are"))
      << tap;
  const std::string junit = folder / "junit.xml";
  Tarvo({"test", "--junit", junit, base});
  const std::string xml = ReadAll(junit);
  EXPECT_TRUE(Holds(xml, "<testsuite name=\"tarvo test\" tests=\"3\" failures=\"1\"")) << xml;
  EXPECT_TRUE(Holds(xml, "+ &lt;&amp;\n")) << xml;

  for (const std::vector<std::string>& words :
       std::vector<std::vector<std::string>>{{"test", folder / "nowhere"},
                                             {"test", base, "--only", "no-such"},
                                             {"test", base, "--jobs", "0"}}) {
    EXPECT_EQ(Tarvo(words).status, 2);
  }
}

TEST(SuiteTest, ARecordingIsATest) {
  const TemporaryFolder folder;
  const std::string script = folder.Write("form.tarvo", kDialog);
  folder.Write("form.dialogs", "");
  const Ending recorded = Tarvo({"test", "--record", script, "--answer", "press 2"});
  EXPECT_EQ(recorded.status, 0) << recorded.errors;
  EXPECT_EQ(ReadAll(folder / "form.answers"), "# dialog 1: Ready?\npress No\n");
  EXPECT_EQ(ReadAll(folder / "form.expected"), "2||||\n");
  EXPECT_EQ(ReadAll(folder / "form.dialogs"), DescriptionsOf(kDialog));
  EXPECT_EQ(Tarvo({"test", script}).status, 0);

  const Ending failed = Tarvo({"test", "--record", script, "--answer", "press Maybe"});
  EXPECT_EQ(failed.status, 4);
  EXPECT_EQ(ReadAll(folder / "form.answers"), "# dialog 1: Ready?\npress No\n") << "is as it was";
  EXPECT_FALSE(std::filesystem::exists(folder / "form.answers.new"));
}

// Kept by a recording, compared, drawn if different, and kept anew.
TEST(SuiteTest, ATestThatKeepsPicturesFailsOnAnotherLook) {
  const TemporaryFolder folder;
  const std::string script = folder.Write("form.tarvo", kDialog);
  std::filesystem::create_directories(folder / "form.pictures");
  EXPECT_EQ(Tarvo({"test", "--record", script, "--answer", "press 2"}).status, 0);
  const std::string kept = ReadAll(folder / "form.pictures/1.png");
  EXPECT_TRUE(kept.starts_with("\x89PNG"));
  EXPECT_EQ(Tarvo({"test", script}).output,
            "passed     " + (folder / "form\n1 passed, 0 failed\n"));
  EXPECT_FALSE(std::filesystem::exists(folder / "form.pictures.new"));

  folder.Write("form.tarvo", "TarvoDialog ( \"0|Ready?|Yes|Not\" )\n");
  folder.Write("form.answers", "press 2\n");
  const std::string difference = folder / "form.pictures.new/1-difference.png";
  const Ending other = Tarvo({"test", script});
  EXPECT_TRUE(Holds(
      other.output,
      ": the dialogs look different than they did\n           | dialog 1: " + difference + "\n"))
      << other.output << other.errors;
  EXPECT_EQ(WidthOf(ReadAll(difference)), 3 * WidthOf(kept) + 24) << "three beside each other";

  EXPECT_EQ(Tarvo({"test", "--update", script}).status, 0);
  EXPECT_NE(ReadAll(folder / "form.pictures/1.png"), kept);
  EXPECT_FALSE(std::filesystem::exists(folder / "form.pictures.new"));
  EXPECT_EQ(Tarvo({"test", script}).status, 0);

  folder.Write("form.pictures/2.png", kept);
  EXPECT_TRUE(Holds(Tarvo({"test", script}).output, "| 2 pictures, now 1: "));
  folder.Write("form.pictures/1.png", "no picture");
  EXPECT_TRUE(
      Holds(Tarvo({"test", script}).output, "form.pictures/1.png cannot be compared with "));
  EXPECT_EQ(Tarvo({"test", "--update", script}).status, 0);
  EXPECT_EQ(Tarvo({"test", script}).status, 0);
  EXPECT_FALSE(std::filesystem::exists(folder / "form.pictures/2.png"));
}

TEST(SuiteTest, AnUpdateKeepsWhatCame) {
  const TemporaryFolder folder;
  const std::string script = folder.Write("form.tarvo", kDialog);
  WriteTest(folder, "form", {{".answers", "press No\n"}, {".expected", "old\n"}, {".dialogs", ""}});
  EXPECT_EQ(Tarvo({"test", script}).status, 1);
  const Ending updated = Tarvo({"test", "--update", script});
  EXPECT_EQ(updated.status, 0) << updated.errors;
  EXPECT_TRUE(Holds(updated.output, ": updated: ")) << updated.output;
  EXPECT_EQ(ReadAll(folder / "form.expected"), "2||||\n");
  EXPECT_EQ(ReadAll(folder / "form.dialogs"), DescriptionsOf(kDialog));
  folder.Write("form.answers", "press Maybe\n");
  EXPECT_EQ(Tarvo({"test", "--update", script}).status, 1) << "nothing came";
  EXPECT_EQ(ReadAll(folder / "form.expected"), "2||||\n");
}

}  // namespace
}  // namespace workbench
