// Dialogs drawn into a file, without a screen.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>

#include "displays/protocol/display_json.h"
#include "tests/desktop/example_dialogs.h"
#include "tests/desktop/screen_reader.h"
#include "tests/desktop/x_session.h"
#include "tests/support/changed_variable.h"
#include "tests/support/temporary_folder.h"

namespace desktop_test {
namespace {

namespace fs = std::filesystem;

class Render : public testing::Test {
 protected:
  Render() { unsetenv("DISPLAY"); }

  // A program of the build.
  static std::string Program(const std::string& name) {
    return fs::read_symlink("/proc/self/exe").parent_path() / name;
  }

  // Runs the program on a line; returns what it says on standard error.
  std::string Run(const std::string& line, const fs::path& file) {
    folder_.Write("line", line + '\n');
    return OutputOf("exec 2>&1; '" + Program("tarvo-desktop") + "' --render '" + file.string() +
                        "' < '" + (folder_ / "line") + "'",
                    &status_);
  }

  // The bytes of the picture.
  std::string Picture(const display::Description& dialog) {
    const fs::path file = folder_ / "picture.png";
    EXPECT_EQ(Run(display::ToJson(dialog).dump(), file), "");
    EXPECT_EQ(status_, 0);
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
  }

  std::string PictureOf(const std::string& message) {
    display::Window dialog = Dialog({}, 0);
    dialog.controls[0].text = message;
    return Picture(dialog);
  }

  const testing_tools::TemporaryFolder folder_;
  int status_ = 0;
};

// A whole number of a PNG's header.
int HeaderNumber(const std::string& png, std::size_t at) {
  int number = 0;
  for (std::size_t i = at; i < at + 4; ++i)
    number = number * 256 + static_cast<unsigned char>(png.at(i));
  return number;
}

TEST_F(Render, PictureIsAsLargeAsTheContent) {
  const std::string png = Picture(ListDialog(false));
  EXPECT_EQ(png.substr(1, 3), "PNG");
  EXPECT_EQ(HeaderNumber(png, 16), 425);
  EXPECT_EQ(HeaderNumber(png, 20), 325);
}

TEST_F(Render, ScaleAndDarkColoursAreTheEnvironments) {
  const std::string plain = Picture(ListDialog(false));
  setenv("QT_SCALE_FACTOR", "1.5", 1);
  EXPECT_EQ(HeaderNumber(Picture(ListDialog(false)), 16), 638);
  unsetenv("QT_SCALE_FACTOR");
  setenv("GTK_THEME", "Adwaita:dark", 1);
  EXPECT_NE(Picture(ListDialog(false)), plain);
  unsetenv("GTK_THEME");
}

TEST_F(Render, SettingsOfGtkAreFollowed) {
  const std::string plain = Picture(ListDialog(false));
  const testing_tools::ChangedVariable settings("XDG_CONFIG_HOME", (folder_ / "").c_str());
  for (const std::string folder : {"gtk-3.0", "gtk-4.0"}) {
    fs::create_directory(folder_ / folder);
    for (const auto& [setting, differs] : {std::pair{"gtk-application-prefer-dark-theme=1", true},
                                           {"gtk-theme-name=Adwaita-dark", true},
                                           {"gtk-theme-name=HighContrast", true},
                                           {"gtk-font-name=Nothing, DejaVu Serif Bold 20", true},
                                           {"gtk-font-name=DejaVu Sans 20", false},
                                           {"gtk-theme-name=Adwaita", false}}) {
      folder_.Write(folder + "/settings.ini", std::string("[Settings]\n") + setting + '\n');
      EXPECT_EQ(Picture(ListDialog(false)) != plain, differs) << folder << ": " << setting;
    }
  }
}

TEST_F(Render, SettingsOfThePortalAreFollowed) {
  ScreenReader::Get();  // and with it a session bus
  const std::string plain = Picture(ListDialog(false));
  for (const auto& [settings, differs] :
       {std::pair{"[org.freedesktop.appearance]\ncolor-scheme=0\n", false},
        {"[org.freedesktop.appearance]\ncolor-scheme=1\n", true},
        {"[org.freedesktop.appearance]\ncolor-scheme=2\n", false},
        {"silent=1\n[org.freedesktop.appearance]\ncolor-scheme=1\n", false},
        {"[org.freedesktop.appearance]\ncontrast=1\n", true},
        {"[org.freedesktop.appearance]\naccent-color=1,0,0\n", true},
        {"[org.freedesktop.appearance]\naccent-color=-1,-1,-1\n", false},
        {"[org.freedesktop.appearance]\naccent-color=1\n", false},
        {"[org.gnome.desktop.interface]\nfont-name=DejaVu Serif 20\n", true}}) {
    const std::string file = folder_.Write("portal", settings);
    const Process portal({Program("desktop_portal"), file}, Process::Output::kRead);
    ASSERT_EQ(portal.Line(), "ready");
    EXPECT_EQ(Picture(ListDialog(false)) != plain, differs) << settings;
  }
}

TEST_F(Render, TextIsDrawnAndIsOnlyText) {
  const std::string file = PictureOf("File");
  EXPECT_EQ(PictureOf("File"), file);
  EXPECT_NE(PictureOf("Fils"), file);
  EXPECT_NE(PictureOf("&File"), file);
  EXPECT_NE(PictureOf("<b>File</b>"), PictureOf("<i>File</i>"));
  EXPECT_NE(PictureOf("Fi\rle"), file);
  EXPECT_EQ(PictureOf("Fi\rle"), PictureOf("Fi\r\nle"));
  EXPECT_EQ(PictureOf("Fi\rle"), PictureOf("Fi\nle"));
}

TEST_F(Render, AlertGrowsWithItsTextsAndShowsItsKind) {
  const display::Alert brief{0, "Stop", "", "OK", {}, {}};
  display::Alert wordy = brief;
  for (int i = 0; i < 60; ++i) wordy.explanation += "one word after another ";
  EXPECT_GT(HeaderNumber(Picture(wordy), 20), HeaderNumber(Picture(brief), 20) + 100);

  display::Alert caution = brief;
  caution.type = 2;
  EXPECT_NE(Picture(caution), Picture(brief));
  display::Alert plain = brief, other = brief;
  plain.type = 3;
  other.type = 4;
  EXPECT_EQ(Picture(other), Picture(plain));
}

TEST_F(Render, FailuresAreOneLineAndAStatus) {
  const std::string good = display::ToJson(display::Description(Dialog({}, 0))).dump();
  for (const auto& [line, file] : {std::pair<std::string, fs::path>{"{", folder_ / "x.png"},
                                   {"{}", folder_ / "x.png"},
                                   {good, folder_ / "missing/x.png"}}) {
    const std::string message = Run(line, file);
    EXPECT_NE(status_, 0);
    EXPECT_EQ(message.find('\n'), message.size() - 1) << message;
  }
}

}  // namespace
}  // namespace desktop_test
