// The installed tree, moved away from where it was installed.

#include "tests/workbench/terminal.h"

namespace workbench {
namespace {

class InstallTest : public testing::Test {
 protected:
  InstallTest() : root_(folder_ / "moved") {
    const Ending ending = testing_tools::Run(
        {CMAKE_PROGRAM, {"--install", BUILD_FOLDER, "--prefix", folder_ / "installed"}});
    EXPECT_EQ(ending.status, 0) << ending.errors;
    std::filesystem::rename(folder_ / "installed", root_);
  }

  Ending Run(const std::vector<std::string>& arguments) const {
    return testing_tools::Run({root_ + "/bin/tarvo", arguments});
  }

  const TemporaryFolder folder_;
  const std::string root_;
};

TEST_F(InstallTest, ProgramsFindEachOtherThere) {
  const Ending eval = Run({"--screenshot", folder_ / "pictures", "--answer", "press 1", "eval",
                           "TarvoDialog ( \"0|Hello\" )", "TarvoDialogVersion ( 0 )"});
  EXPECT_EQ(eval.status, 0) << eval.errors;
  EXPECT_EQ(eval.output, "1||||\n220\n");
  EXPECT_TRUE(ReadAll(folder_ / "pictures/1.png").starts_with("\x89PNG"));
  EXPECT_TRUE(Run({"check", "--only", "functions"}).output.ends_with("1 passed, 0 failed\n"));
  EXPECT_TRUE(Holds(Run({"--language", "de", "info"}).output, "Dialog"));
  Terminal terminal(root_ + "/bin/tarvo", {"repl"}, {"HOME=" + (folder_ / "home"), "TERM=xterm"});
  terminal.Expect("tarvo> ");
  terminal.Type("\x04");
  EXPECT_EQ(terminal.Status(), 0);
}

// Nothing is looked for where it was built.
TEST_F(InstallTest, LibrariesAreTakenFromThereAlone) {
  const std::string script = "LD_DEBUG=libs " + root_ + "/bin/tarvo eval 'TarvoLC ( 0 )' 2>&1";
  const Ending ending = testing_tools::Run({"/bin/sh", {"-c", script}});
  EXPECT_TRUE(Holds(ending.output, root_)) << ending.output;
  EXPECT_FALSE(Holds(ending.output, BUILD_FOLDER)) << ending.output;
}

TEST_F(InstallTest, WhatUsersReadIsThere) {
  for (const char* file :
       {"/share/man/man1/tarvo.1", "/share/bash-completion/completions/tarvo",
        "/share/doc/tarvo/README.md", "/share/doc/tarvo/docs/functions.md",
        "/share/doc/tarvo/docs/pictures/standard-dialog.png",
        "/share/doc/tarvo/docs/description.schema.json", "/share/doc/tarvo/examples/list.tarvo",
        "/lib/tarvo/Quenlix.fmplugin/Contents/Resources/en.lproj/Quenlix.strings"}) {
    EXPECT_NE(ReadAll(root_ + file), "") << file;
  }
}

}  // namespace
}  // namespace workbench
