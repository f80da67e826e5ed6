// SPDX-License-Identifier: MIT
#include "generator_helpers.h"

#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/log_capture.h"
#include "support/temporary_directory.h"

namespace Cradle::Parser {
namespace {

using Testing::LogCapture;
using Testing::TemporaryDirectory;

class GeneratorHelpersTest : public ::testing::Test {
 protected:
  std::string defaults(const std::string& pattern = "d/*.lxc") {
    const LogCapture log(LogCapture::Level::LogDebug);
    GeneratorHelpers::parseDefaults(writer_, directory_.path(pattern));
    log_ = log.text();
    return directory_.read("out");
  }

  std::string mounts(const std::vector<std::string>& arguments = {}) {
    const LogCapture log(LogCapture::Level::LogDebug);
    GeneratorHelpers::runMountHooks(writer_, directory_.path("d/*.sh"), "Mounts", arguments);
    log_ = log.text();
    return directory_.read("out");
  }

  // The frame of a file's content, which must end its last line.
  std::string framed(const std::string& name, const std::string& content) const {
    const std::string path = directory_.path(name);
    return "\n# " + path + " content\n" + content + "# end of " + path + " content\n";
  }

  TemporaryDirectory directory_;
  ConfigWriter writer_{directory_.path("out"), ConfigWriter::Separator::Spaced};
  std::string log_;
};

TEST_F(GeneratorHelpersTest, CopiesDefaultsInAFrameOfComments) {
  directory_.write("d/b.lxc", "lxc.b = 1\n");
  directory_.write("d/a.lxc", " lxc.a = 1\n\n# kept");
  EXPECT_EQ(defaults(),
            framed("d/a.lxc", " lxc.a = 1\n\n# kept\n") + framed("d/b.lxc", "lxc.b = 1\n"));
  EXPECT_EQ(log_, "");
}

TEST_F(GeneratorHelpersTest, FramesAnEmptyFileToo) {
  directory_.write("d/a.lxc", "");
  EXPECT_EQ(defaults(), framed("d/a.lxc", "\n"));
}

TEST_F(GeneratorHelpersTest, WritesThePathOfDefaultsAsThePatternDoes) {
  directory_.write("d/a.lxc", "x\n");
  EXPECT_EQ(defaults("d/../d//*.lxc"), framed("d/../d//a.lxc", "x\n"));
}

TEST_F(GeneratorHelpersTest, WritesEachMountThatAHookPrintsUnderTheKey) {
  directory_.writeScript("d/b.sh", "echo 'tmpfs dev tmpfs nosuid 0 0'\n");
  directory_.writeScript("d/a.sh", "echo '/a b none bind 0 0'\necho '/c d none bind 0 0'\n");
  EXPECT_EQ(mounts(),
            "Mounts = /a b none bind 0 0\n"
            "Mounts = /c d none bind 0 0\n"
            "Mounts = tmpfs dev tmpfs nosuid 0 0\n");
  EXPECT_EQ(log_, "");
}

TEST_F(GeneratorHelpersTest, WritesAMountAsItWasPrinted) {
  directory_.writeScript("d/a.sh", "echo '/a b none bind 0 0 '\n");
  EXPECT_EQ(mounts(), "Mounts = /a b none bind 0 0 \n");
}

TEST_F(GeneratorHelpersTest, GivesMountHooksTheirArguments) {
  directory_.writeScript("d/a.sh", "echo \"$2/$1 $3 none bind 0 0\"\n");
  EXPECT_EQ(mounts({"1000", "/home", "data"}), "Mounts = /home/1000 data none bind 0 0\n");
}

// Failures

TEST_F(GeneratorHelpersTest, WritesNothingWhereNothingMatches) {
  EXPECT_EQ(defaults(), "");
  EXPECT_EQ(log_, "");
  EXPECT_EQ(mounts(), "");
  EXPECT_EQ(log_, "");
}

TEST_F(GeneratorHelpersTest, WritesNoFrameForWhatCannotBeRead) {
  directory_.write("d/a.lxc/file", "x\n");
  std::filesystem::create_symlink("nowhere", directory_.path("d/b.lxc"));
  directory_.write("d/c.lxc", "x\n");
  EXPECT_EQ(defaults(), framed("d/c.lxc", "x\n"));
  EXPECT_EQ(log_, "");
}

TEST_F(GeneratorHelpersTest, WarnsOfEveryLineThatIsNoMountAndWritesTheOthers) {
  const std::string hook = directory_.writeScript("d/a.sh",
                                                  "echo '/a b none bind 0 0'\n"
                                                  "echo 'proc b proc bind 0 0'\n"
                                                  "echo\n"
                                                  "echo '/c d none bind 0 0'\n");
  EXPECT_EQ(mounts(), "Mounts = /a b none bind 0 0\nMounts = /c d none bind 0 0\n");
  EXPECT_EQ(log_,
            "ERROR: Mount entry must begin with '/' or be 'tmpfs' or 'none': proc b proc bind 0 0\n"
            "WARNING: Invalid mount entry from " +
                hook +
                ": proc b proc bind 0 0\n"
                "ERROR: Not enough parts in mount entry: \n"
                "WARNING: Invalid mount entry from " +
                hook + ": \n");
}

TEST_F(GeneratorHelpersTest, WritesTheMountsOfAFailingHook) {
  const std::string hook = directory_.writeScript("d/a.sh", "echo '/a b none bind 0 0'\nexit 65\n");
  EXPECT_EQ(mounts(), "Mounts = /a b none bind 0 0\n");
  EXPECT_EQ(log_, "WARNING: " + hook + " exited with non-zero status: A\n");
}

}  // namespace
}  // namespace Cradle::Parser
