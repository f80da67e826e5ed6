// SPDX-License-Identifier: MIT
#include "generators/fragments.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "glob_paths.h"
#include "support/log_capture.h"
#include "support/temporary_directory.h"

namespace Cradle::Generators {
namespace {

using Parser::ConfigWriter;
using Testing::LogCapture;
using Testing::TemporaryDirectory;

// A configuration directory "d" and what its fragments and hooks let the writer write.
class Fragments : public ::testing::Test {
 protected:
  std::string statics() {
    return written([&] { collectStatic(writer_, directory_.path("d") + kStaticLxc, "Key"); });
  }

  std::string propertyHooks() {
    const std::string pattern = directory_.path("d") + kPropertyPreHooks;
    return written([&] { collectPropertyHooks(writer_, pattern, "Key", arguments_); });
  }

  std::string rawPropertyHooks(const char* kind) {
    return written([&] { runPropertyHooks(writer_, directory_.path("d"), kind, arguments_); });
  }

  // Everything written so far, this call included.
  template <typename Action>
  std::string written(Action action) {
    const LogCapture log(LogCapture::Level::LogDebug);
    action();
    log_ = log.text();
    return directory_.read("out");
  }

  std::string nodes(const std::vector<std::string>& names) const {
    std::string all;
    for (const std::string& node : gatherDeviceNodes(names)) {
      all += "[" + node + "]";
    }
    return all;
  }

  TemporaryDirectory directory_;
  ConfigWriter writer_{directory_.path("out"), ConfigWriter::Separator::Plain};
  std::vector<std::string> arguments_;
  std::string log_;
};

// Static fragments

TEST_F(Fragments, WritesEachLineOfAStaticFileUnderTheSameKey) {
  directory_.write("d/static/a.lxc", "one\n two = 2 \nthree");
  EXPECT_EQ(statics(), "Key=one\nKey= two = 2 \nKey=three\n");
}

TEST_F(Fragments, LeavesOutTheEmptyLinesOfAStaticFile) {
  directory_.write("d/static/a.lxc", "\n\none\n\n\ntwo\n \n\n");
  EXPECT_EQ(statics(), "Key=one\nKey=two\nKey= \n");
}

TEST_F(Fragments, TakesStaticFilesInByteOrder) {
  directory_.write("d/static/b.lxc", "b\n");
  directory_.write("d/static/a.lxc", "a\n");
  directory_.write("d/static/a.ro", "not taken\n");
  EXPECT_EQ(statics(), "Key=a\nKey=b\n");
}

TEST_F(Fragments, KeepsTheCarriageReturnsOfAStaticFile) {
  directory_.write("d/static/a.lxc", "one\r\n\r\ntwo\r\n");
  EXPECT_EQ(statics(), "Key=one\r\nKey=\r\nKey=two\r\n");
}

// Property hooks

TEST_F(Fragments, CollectsTheLinesOfPropertyHooksThatAreNotEmpty) {
  directory_.writeScript("d/property-pre-hooks/a.sh", "printf 'x\\n\\ny=1 \\n \\n'\n");
  EXPECT_EQ(propertyHooks(), "Key=x\nKey=y=1 \nKey= \n");
}

TEST_F(Fragments, CollectsFromPropertyHooksInByteOrderWithTheirArguments) {
  arguments_ = {"1000", "u"};
  directory_.writeScript("d/property-pre-hooks/b.sh", "echo b $2\n");
  directory_.writeScript("d/property-pre-hooks/a.sh", "echo a $1\n");
  EXPECT_EQ(propertyHooks(), "Key=a 1000\nKey=b u\n");
}

TEST_F(Fragments, WritesTheLinesOfPropertyHooksAsTheyAre) {
  directory_.writeScript("d/property-pre-hooks/a.sh", "printf 'x\\n\\n y=1 \\n'\n");
  EXPECT_EQ(rawPropertyHooks("pre-hooks"), "x\n\n y=1 \n");
}

TEST_F(Fragments, RunsThePropertyHooksOfOneKindOnly) {
  arguments_ = {"1000"};
  directory_.writeScript("d/property-pre-hooks/a.sh", "echo pre $1\n");
  directory_.writeScript("d/property-post-hooks/b.sh", "echo post b $1\n");
  directory_.writeScript("d/property-post-hooks/a.sh", "echo post a $1\n");
  directory_.write("d/property-post-hooks/a.txt", "no script");
  EXPECT_EQ(rawPropertyHooks("post-hooks"), "post a 1000\npost b 1000\n");
  EXPECT_EQ(rawPropertyHooks("pre-hooks"), "post a 1000\npost b 1000\npre 1000\n");
}

// Device nodes

TEST_F(Fragments, LooksForANamedDeviceBelowDev) {
  EXPECT_EQ(nodes({"null"}), "[/dev/null]");
  EXPECT_EQ(nodes({"nul[l]", "./zero"}), "[/dev/null][/dev/./zero]");
}

TEST_F(Fragments, LooksForADeviceWithAPathAsItStands) {
  const std::string file = directory_.write("binder", "");
  EXPECT_EQ(nodes({file, "/dev/null"}), "[" + file + "][/dev/null]");
}

TEST_F(Fragments, TakesDevicesInTheOrderOfTheirNames) {
  EXPECT_EQ(nodes({"zero", "null", "zero"}), "[/dev/zero][/dev/null][/dev/zero]");
}

TEST_F(Fragments, ExpandsADevicePatternInTheOrderInWhichTheDirectoryGivesIt) {
  constexpr std::size_t kCount = 20;
  for (std::size_t i = 0; i < kCount; ++i) {
    directory_.write("binder" + std::to_string(i * 7 % kCount), "");
  }
  directory_.write("other", "");
  const std::string pattern = directory_.path("binder*");
  const std::vector<std::string> found = gatherDeviceNodes(std::vector<std::string>{pattern});
  EXPECT_EQ(found.size(), kCount);
  EXPECT_EQ(found, Parser::globPaths(pattern));
}

TEST_F(Fragments, EndsADeviceDirectoryInASlash) {
  EXPECT_EQ(nodes({directory_.path()}), "[" + directory_.path() + "/]");
}

TEST_F(Fragments, TakesAnEmptyNameAsTheDirectoryOfAllDevices) {
  EXPECT_EQ(nodes({""}), "[/dev/]");
}

// Failures

TEST_F(Fragments, WritesNothingWhereThereIsNothing) {
  EXPECT_EQ(statics(), "");
  EXPECT_EQ(log_, "");
  EXPECT_EQ(propertyHooks(), "");
  EXPECT_EQ(log_, "");
  EXPECT_EQ(rawPropertyHooks("pre-hooks"), "");
  EXPECT_EQ(log_, "");
}

TEST_F(Fragments, PassesOverADirectoryNamedLikeAStaticFile) {
  directory_.write("d/static/a.lxc/file", "no\n");
  directory_.write("d/static/b.lxc", "yes\n");
  EXPECT_EQ(statics(), "Key=yes\n");
  EXPECT_EQ(log_, "");
}

TEST_F(Fragments, CountsTheLinesOfAFailingPropertyHook) {
  const std::string hook = directory_.writeScript("d/property-pre-hooks/a.sh", "echo x\nexit 65\n");
  directory_.writeScript("d/property-pre-hooks/b.sh", "echo y\n");
  EXPECT_EQ(propertyHooks(), "Key=x\nKey=y\n");
  EXPECT_EQ(log_, "WARNING: " + hook + " exited with non-zero status: A\n");
  EXPECT_EQ(rawPropertyHooks("pre-hooks"), "Key=x\nKey=y\nx\ny\n");
  EXPECT_EQ(log_, "WARNING: " + hook + " exited with non-zero status: A\n");
}

TEST_F(Fragments, FindsNoNodeForAMissingDeviceInSilence) {
  const LogCapture log(LogCapture::Level::LogDebug);
  EXPECT_EQ(nodes({"no-such-device", "null", directory_.path("missing")}), "[/dev/null]");
  EXPECT_EQ(nodes({}), "");
  EXPECT_EQ(log.text(), "");
}

}  // namespace
}  // namespace Cradle::Generators
