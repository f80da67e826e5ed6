// SPDX-License-Identifier: MIT
#include "file_walk.h"

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

// Both engines on one directory. What they hand out is noted as "name:[line]" or "name:[text]".
class FileWalk : public ::testing::Test {
 protected:
  std::string hookLines(const std::string& pattern = "*.sh") {
    const LogCapture log(LogCapture::Level::LogDebug);
    std::string notes;
    forEachHookLine(directory_.path(pattern), arguments_, noteIn(notes));
    log_ = log.text();
    return notes;
  }

  std::string files(const std::string& pattern = "*.lxc") {
    const LogCapture log(LogCapture::Level::LogDebug);
    std::string notes;
    forEachFile(directory_.path(pattern), noteIn(notes));
    log_ = log.text();
    return notes;
  }

  FileAction noteIn(std::string& notes) const {
    return [this, &notes](const std::string& path, std::string_view text) {
      EXPECT_TRUE(path.starts_with(directory_.path() + "/")) << path;
      notes += path.substr(directory_.path().size() + 1) + ":[";
      notes += text;
      notes += "]";
    };
  }

  TemporaryDirectory directory_;
  std::vector<std::string> arguments_;
  std::string log_;
};

TEST_F(FileWalk, HandsOutEachLineThatAHookPrints) {
  directory_.writeScript("a.sh", "echo one\necho ' two '\n");
  EXPECT_EQ(hookLines(), "a.sh:[one]a.sh:[ two ]");
  EXPECT_EQ(log_, "");
}

TEST_F(FileWalk, HandsOutTheEmptyLinesOfAHookButNoneForTheLastLineFeed) {
  directory_.writeScript("a.sh", "printf '\\nx\\n\\ny\\n'\n");
  EXPECT_EQ(hookLines(), "a.sh:[]a.sh:[x]a.sh:[]a.sh:[y]");
  directory_.writeScript("a.sh", "printf 'x\\n\\n'\n");
  EXPECT_EQ(hookLines(), "a.sh:[x]a.sh:[]");
}

TEST_F(FileWalk, HandsOutALastLineWithoutALineFeed) {
  directory_.writeScript("a.sh", "printf 'x\\ny'\n");
  EXPECT_EQ(hookLines(), "a.sh:[x]a.sh:[y]");
}

TEST_F(FileWalk, RunsHooksInByteOrder) {
  for (const char* const name : {"b.sh", "2-y.sh", "a.sh", "10-x.sh", "Z.sh", "c.txt"}) {
    directory_.writeScript(name, "echo\n");
  }
  EXPECT_EQ(hookLines(), "10-x.sh:[]2-y.sh:[]Z.sh:[]a.sh:[]b.sh:[]");
}

TEST_F(FileWalk, GivesEveryHookAllArguments) {
  arguments_ = {"1000", "user name", "/home/u", "", "0"};
  directory_.writeScript("a.sh", "printf '%s|' \"$@\"\n");
  directory_.writeScript("b.sh", "echo $#\n");
  EXPECT_EQ(hookLines(), "a.sh:[1000|user name|/home/u||0|]b.sh:[5]");
}

TEST_F(FileWalk, HandsOutWholeFiles) {
  directory_.write("a.lxc", "one\n\ntwo");
  directory_.write("b.lxc", "");
  EXPECT_EQ(files(), "a.lxc:[one\n\ntwo]b.lxc:[]");
  EXPECT_EQ(log_, "");
}

TEST_F(FileWalk, ReadsFilesInByteOrder) {
  for (const char* const name : {"b.lxc", "2-y.lxc", "a.lxc", "10-x.lxc", "Z.lxc", "c.txt"}) {
    directory_.write(name, "");
  }
  EXPECT_EQ(files(), "10-x.lxc:[]2-y.lxc:[]Z.lxc:[]a.lxc:[]b.lxc:[]");
}

TEST_F(FileWalk, ReadsFilesOfAnySize) {
  for (const std::size_t size : {16383U, 16384U, 16385U, 32768U, 1000000U}) {
    const std::string text(size, 'x');
    directory_.write("a.lxc", text);
    EXPECT_EQ(files(), "a.lxc:[" + text + "]") << size;
  }
}

TEST_F(FileWalk, ReadsFilesOfBytes) {
  const std::string bytes("\0\r\n\xff\x1a\0", 6);
  directory_.write("a.lxc", bytes);
  EXPECT_EQ(files(), "a.lxc:[" + bytes + "]");
}

TEST_F(FileWalk, NamesAPathAsThePatternWroteIt) {
  directory_.writeScript("d/a.sh", "echo x\n");
  directory_.write("d/a.lxc", "x");
  EXPECT_EQ(hookLines("./d//*.sh"), "./d//a.sh:[x]");
  EXPECT_EQ(files("./d//*.lxc"), "./d//a.lxc:[x]");
}

// Failures

TEST_F(FileWalk, DoesNothingInSilenceWhereNothingMatches) {
  EXPECT_EQ(hookLines("missing/*.sh"), "");
  EXPECT_EQ(log_, "");
  EXPECT_EQ(files("missing/*.lxc"), "");
  EXPECT_EQ(log_, "");
}

TEST_F(FileWalk, PassesOverFilesThatCannotBeOpenedInSilence) {
  directory_.write("a.lxc", "x");
  std::filesystem::create_symlink("nowhere", directory_.path("b.lxc"));
  directory_.write("c.lxc", "y");
  EXPECT_EQ(files(), "a.lxc:[x]c.lxc:[y]");
  EXPECT_EQ(log_, "");
}

TEST_F(FileWalk, PassesOverDirectoriesInSilence) {
  directory_.write("a.lxc", "x");
  directory_.write("b.lxc/file", "z");
  directory_.write("c.lxc", "y");
  EXPECT_EQ(files(), "a.lxc:[x]c.lxc:[y]");
  EXPECT_EQ(log_, "");
}

TEST_F(FileWalk, CountsTheLinesOfAFailingHookAndGoesOn) {
  directory_.writeScript("a.sh", "echo one\nexit 65\n");
  directory_.writeScript("b.sh", "");
  directory_.writeScript("c.sh", "echo two\n");
  EXPECT_EQ(hookLines(), "a.sh:[one]c.sh:[two]");
  EXPECT_EQ(log_, "WARNING: " + directory_.path("a.sh") + " exited with non-zero status: A\n");
}

TEST_F(FileWalk, LetsAQuoteInAnArgumentBreakTheQuoting) {
  arguments_ = {"a' 'b"};
  directory_.writeScript("a.sh", "printf '[%s]' \"$@\"\n");
  EXPECT_EQ(hookLines(), "a.sh:[[a][b]]");
}

}  // namespace
}  // namespace Cradle::Parser
