// The preview of a script, while its user writes it: seen through a screen reader, and on the
// screen.

#include <gtest/gtest.h>

#include <filesystem>
#include <future>

#include "tests/desktop/screen_reader.h"
#include "tests/desktop/x_session.h"
#include "tests/workbench/terminal.h"

namespace desktop_test {
namespace {

namespace fs = std::filesystem;

class Preview : public testing::Test {
 protected:
  Preview() { alarm(50); }
  ~Preview() override { alarm(0); }

  // Saves as many editors do: the file gets the name of the old one.
  void Save(const std::string& script) {
    folder_.Write("new", script);
    fs::rename(folder_ / "new", form_);
  }

  // Begins the preview, at a terminal.
  void Begin(const std::string& script, std::vector<std::string> options = {}) {
    Save(script);
    options.insert(options.end(), {"preview", form_});
    terminal_ = std::make_unique<workbench::Terminal>(
        options, std::vector{std::string("DISPLAY=") + std::getenv("DISPLAY")});
    window_ = user_.ActiveWindow("form.tarvo");
    ASSERT_NE(window_, 0U);
  }

  bool Shows(const std::string& line) { return reader_.WaitForLine(line); }
  std::string Geometry() const {
    return OutputOf("xdotool getwindowgeometry --shell " + std::to_string(window_));
  }
  bool Holds(const std::string& part) { return reader_.Tree().find(part) != std::string::npos; }

  ScreenReader& reader_ = ScreenReader::Get();
  XSession user_{XSession::Manager::kNone};
  const testing_tools::TemporaryFolder folder_;
  const std::string form_ = folder_ / "form.tarvo";
  std::unique_ptr<workbench::Terminal> terminal_;
  xcb_window_t window_ = 0;
};

TEST_F(Preview, ShowsEachDialogWithItsAdviceAndWhatIsSaved) {
  Begin("TarvoDialog ( \"2|Enter the name|OK|Cancel|First|Last\" )\nTarvoAlert ( \"1|Ready\" )\n");
  EXPECT_TRUE(
      Shows("label: \"First\" is a button, and no field has a label: items 3 to 6 are "
            "buttons; the labels begin with item 7, line 1, column 43 · labels-as-buttons"))
      << reader_.Tree();
  EXPECT_TRUE(Shows("graphic: dialog Enter the name (Enter the name, OK, Cancel, First, Last)"));
  EXPECT_TRUE(Shows("graphic: dialog Ready (Ready, OK)"));
  EXPECT_TRUE(Shows("label: 2 dialogs, 1 piece of advice"));
  Save("TarvoDialog ( \"1|What?|OK||||Name\" )\n");
  EXPECT_TRUE(Shows("label: 1 dialog, 0 pieces of advice"));
  EXPECT_TRUE(Holds("graphic: dialog What? (What?, OK, Name)")) << reader_.Tree();
  EXPECT_FALSE(Holds("Enter the name") || Holds("Ready"));
  user_.RequestClose(window_);
  EXPECT_EQ(terminal_->Status(), 0);
}

// What the window shows of a line of advice, beside all dialogs.
std::vector<unsigned> Row(const XSession& user) {
  std::vector<unsigned> pixels;
  for (int x = 460; x < 900; ++x) pixels.push_back(user.PixelAt(x, 46));
  return pixels;
}

// Its button reads "Last", and so does all of the window: the advice is turned in its quotes alone.
TEST_F(Preview, AQuotedTextDoesNotTurnTheSentenceAroundIt) {
  const auto script = [](const std::string& button) {
    return "TarvoDialog ( \"2|Name|OK|Cancel|" + button + "|No\" )\n";
  };
  Begin(script("\u202EtsaL"));
  EXPECT_TRUE(Shows("graphic: dialog Name (Name, OK, Cancel, \u202EtsaL, No)")) << reader_.Tree();
  const auto turned = Row(user_);
  Save(script("Last"));
  EXPECT_TRUE(Shows("graphic: dialog Name (Name, OK, Cancel, Last, No)")) << reader_.Tree();
  EXPECT_TRUE(WaitFor([&] { return Row(user_) == turned; }));
}

TEST_F(Preview, WhatThePluginPrintsIsNotShown) {
  const std::string odd = workbench::MakeBundle(folder_, "Odd", ODD_PLUGIN);
  Begin("OddPrint\nOddFail ( 1 )\n", {"--plugin", odd});
  EXPECT_TRUE(Shows("label: up to the error: 0 dialogs, 0 pieces of advice")) << reader_.Tree();
  EXPECT_TRUE(Holds("OddFail: the plug-in answered error code 5")) << reader_.Tree();
}

TEST_F(Preview, AnErrorTakesThePlaceOfWhatWasThereAndThePreviewGoesOn) {
  Begin("TarvoDialog ( \"0|First\" )\nTarvoDialog ( \"0|Second\" )\n");
  EXPECT_TRUE(Shows("label: 2 dialogs, 0 pieces of advice"));
  Save("TarvoDialog ( \"0|First\" )\nTarvoDialog ( \"0|Second\" & )\n");
  EXPECT_TRUE(Shows("label: up to the error: 1 dialog, 0 pieces of advice"));
  EXPECT_TRUE(Holds("form.tarvo, line 2, column 28: unexpected \")\"")) << reader_.Tree();
  EXPECT_FALSE(Holds("dialog Second"));
  fs::remove(form_);
  EXPECT_TRUE(Shows("label: up to the error: 0 dialogs, 0 pieces of advice"));
  EXPECT_TRUE(Holds("No such file")) << reader_.Tree();
  Save("Loop\nTarvoDialog ( \"0|Again\" )\nExit Loop If [ TarvoLC ( \"\" ) = 1 ]\nEnd Loop\n");
  EXPECT_TRUE(Shows("label: up to the error: 1 dialog, 0 pieces of advice")) << reader_.Tree();
  Save("While ( [ i = 0 ] ; i < 9000000 ; [ i = i + 1 ] ; i )\n");
  EXPECT_TRUE(Shows("label: up to the error: 0 dialogs, 0 pieces of advice"));
  Save("TarvoDialog ( \"0|Last\" )\n");
  EXPECT_TRUE(Shows("label: 1 dialog, 0 pieces of advice"));
  terminal_->Type(workbench::kControlC);
  EXPECT_EQ(terminal_->Status(), 130);
}

TEST_F(Preview, TellsWhatIsCutOnTheScreenAndFollowsAnswersToo) {
  const std::string answers = folder_.Write("answers", "press 1\n");
  Begin(
      R"(If ( Left ( TarvoDialog ( "0|Ready?|A button with far too long a text|No" ) ; 1 ) = 2 ; )"
      R"(TarvoAlert ( "1|Not ready" ) ; TarvoAlert ( "1|Begin" ) ))"
      "\n",
      {"--answers", answers});
  EXPECT_TRUE(Shows("label: 2 dialogs, 1 piece of advice")) << reader_.Tree();
  EXPECT_TRUE(Holds("\"A button with far too long a text\" is cut on the screen"));
  EXPECT_TRUE(Holds("dialog Begin"));
  folder_.Write("answers", "press 2\n");
  EXPECT_TRUE(Shows("graphic: dialog Not ready (Not ready, OK)")) << reader_.Tree();
}

TEST_F(Preview, TellsWhatIsCutOfAScriptThatRunsForLong) {
  Begin(
      "TarvoDialog ( \"0|Ready?|A button with far too long a text|No\" )\nLoop\n"
      "Exit Loop If [ 1 = 2 ]\nEnd Loop\n",
      {"--timeout", "2"});
  EXPECT_TRUE(Shows("label: up to the error: 1 dialog, 1 piece of advice")) << reader_.Tree();
}

TEST_F(Preview, TakesTheColoursThatTheDesktopTells) {
  const auto set = [this](const std::string& scheme) {
    return folder_.Write("settings", "[org.freedesktop.appearance]\ncolor-scheme=" + scheme + '\n');
  };
  const Process portal(
      {fs::read_symlink("/proc/self/exe").parent_path() / "desktop_portal", set("0")},
      Process::Output::kRead);
  ASSERT_EQ(portal.Line(), "ready");
  Begin("TarvoDialog ( \"0|Hello\" )\n");
  EXPECT_TRUE(Shows("label: 1 dialog, 0 pieces of advice"));
  EXPECT_TRUE(WaitFor([&] { return user_.PixelAt(60, 120) == 0xefefefU; }));
  set("1");
  EXPECT_TRUE(WaitFor([&] { return user_.PixelAt(60, 120) == 0x2b2c2fU; }))
      << std::hex << user_.PixelAt(60, 120);
}

// What a column of the window shows, beside all texts.
std::vector<unsigned> Column(const XSession& user) {
  std::vector<unsigned> pixels;
  for (int y = 0; y < 600; y += 5) pixels.push_back(user.PixelAt(400, y));
  return pixels;
}

TEST_F(Preview, StaysWhereItsUserHasScrolledTo) {
  const auto script = [](const std::string& name) {
    std::string text;
    for (int i = 0; i < 9; ++i) {
      text += "TarvoDialog ( \"0|" + name + std::to_string(i) + "|OK|No\" )\n";
    }
    return text;
  };
  Begin(script("Old"));
  EXPECT_TRUE(Shows("graphic: dialog Old8 (Old8, OK, No)")) << reader_.Tree();
  const auto top = Column(user_);
  user_.Key("Next Next Down");
  EXPECT_TRUE(WaitFor([&] { return Column(user_) != top; }));
  const auto scrolled = Column(user_);
  Save(std::string(4000, 'x') + " ( 1 )\n");
  EXPECT_TRUE(Shows("label: up to the error: 0 dialogs, 0 pieces of advice"));
  EXPECT_NE(Geometry().find("WIDTH=980\n"), std::string::npos) << Geometry();
  Save(script("New"));
  EXPECT_TRUE(Shows("graphic: dialog New8 (New8, OK, No)"));
  EXPECT_TRUE(WaitFor([&] { return Column(user_) == scrolled; }));
  user_.Key("Home");
  EXPECT_TRUE(WaitFor([&] { return Column(user_) == top; }));
}

}  // namespace
}  // namespace desktop_test
