// SPDX-License-Identifier: MIT
#include "generators/lxc_formats.h"

#include <string>

#include <gtest/gtest.h>

#include "support/log_capture.h"
#include "support/output_bench.h"
#include "support/users.h"
#include "support/written_texts.h"

namespace Cradle::Generators {
namespace {

using Testing::expectWritten;
using Testing::keyLine;
using Testing::kKeyRow;
using Testing::LogCapture;
using Testing::OutputBench;
using Testing::TemporaryDirectory;
using Testing::Written;

constexpr OutputRow kEntryRow{.key = "entry", .source = {"G", "Key"}, .suffix = " suffix"};

constexpr Written kWritten[] = {
    {&kDevicePath, "binder", "/dev/binder"},
    {&kDevicePath, "/dev/binderfs/binder", "/dev/binderfs/binder"},
    {&kDevicePath, "binderfs/binder", "/dev/binderfs/binder"},
    {&kDevicePath, " /dev/binder", "/dev/ /dev/binder"},
    {&kDevicePath, "${config:G/None}", "/dev/"},
    {&kDirectory, "/run/user/1000/wayland-0", "/run/user/1000"},
    {&kDirectory, "/run/display/", "/run/display"},
    {&kDirectory, "/wayland-0", "/"},
    {&kDirectory, "/", "/"},
    {&kDirectory, "wayland-0", "."},
    {&kDirectory, "run/wayland-0", "run"},
    {&kDirectory, "//", "/"},
    {&kDirectory, "${config:G/None}", "."},
};

TEST(LxcFormats, WriteAValue) {
  expectWritten(kWritten);
}

TEST(LxcFormats, WriteAnAbsentValue) {
  EXPECT_EQ(OutputBench().text(kDevicePath, kKeyRow), "/dev/");
  EXPECT_EQ(OutputBench().text(kDirectory, kKeyRow), ".");
}

TEST(LxcStorage, IsOutsideTheDataRootAsTheTextsGo) {
  struct Storage {
    const char* lines;
    bool outside;
  };
  const OutputRow row{.source = {"Config", "StoragePath"}};
  for (const Storage& storage : std::initializer_list<Storage>{
           {"StoragePath=/home/u/data/media\nDataRoot=/home/u/data\n", false},
           {"StoragePath=/home/u/data/media\nDataRoot=/home/u/dat\n", true},
           {"StoragePath=/home/u/data\nDataRoot=/home/u/data\n", true},
           {"StoragePath=/home/u/data/\nDataRoot=/home/u/data\n", false},
           {"StoragePath=/home/u/data//media\nDataRoot=/home/u/data/\n", false},
           {"StoragePath=/home/u/data/media\nDataRoot=/home/u/data/\n", true},
           {"StoragePath=/home/u/data/../media\nDataRoot=/home/u/data\n", false},
           {"StoragePath=/home/u/data/media\n", false},
           {"StoragePath=media\n", true},
           {"StoragePath=${config:No/Such}\n", true},
           {"DataRoot=/home/u/data\n", false},
       }) {
    const OutputBench bench("[Config]\n" + std::string(storage.lines));
    EXPECT_EQ(bench.holds(kIfOutsideDataRoot, row), storage.outside) << storage.lines;
  }
}

// Lines

class LxcLinesTest : public ::testing::Test {
 protected:
  using Lines = bool (*)(OutputContext&, const OutputRow&);

  // What `lines` writes for a list, followed by "wrong" where it fails.
  std::string written(Lines lines, const std::string& list) {
    OutputBench bench(keyLine(list));
    const LogCapture log;
    const bool right = lines(bench.context, kEntryRow);
    log_ = log.text();
    return bench.written() + (right ? "" : "wrong");
  }

  std::string entry(const std::string& node, const std::string& kind) const {
    const std::string source = nodes_.path(node);
    return "entry=" + source + " " + source.substr(1) + " none bind,nosuid,create=" + kind +
           " 0 0\n";
  }

  TemporaryDirectory nodes_;
  std::string log_;
};

TEST_F(LxcLinesTest, BindEveryNodeOfTheDevices) {
  nodes_.write("b", "");
  nodes_.write("a1", "");
  const std::string list = nodes_.path("b") + ";" + nodes_.path("a*");
  for (const Lines lines : {writeRequiredDeviceNodes, writeOptionalDeviceNodes}) {
    EXPECT_EQ(written(lines, list), entry("b", "file") + entry("a1", "file"));
    EXPECT_EQ(log_, "");
  }
}

TEST_F(LxcLinesTest, LookForOtherNamesBelowDev) {
  const std::string null = "entry=/dev/null dev/null none bind,nosuid,create=file 0 0\n";
  EXPECT_EQ(written(writeRequiredDeviceNodes, "null;nul[l]"), null + null);
  EXPECT_EQ(written(writeOptionalDeviceNodes, "null;nul[l]"), null + null);
}

TEST_F(LxcLinesTest, BindDirectoriesAsSuchWhereTheyAreOptional) {
  nodes_.write("dri/card0", "");
  EXPECT_EQ(written(writeOptionalDeviceNodes, nodes_.path("dri")), entry("dri", "dir"));
  EXPECT_EQ(written(writeOptionalDeviceNodes, nodes_.path("d?i")), entry("dri", "dir"));
  EXPECT_EQ(written(writeRequiredDeviceNodes, nodes_.path("dri")), entry("dri/", "file"));
}

TEST_F(LxcLinesTest, PassOverOptionalDevicesWithoutANode) {
  nodes_.write("b", "");
  EXPECT_EQ(written(writeOptionalDeviceNodes, nodes_.path("gone*") + ";" + nodes_.path("b")),
            entry("b", "file"));
  EXPECT_EQ(log_, "");
}

TEST_F(LxcLinesTest, BindTheRootItself) {
  EXPECT_EQ(written(writeOptionalDeviceNodes, "/"), "entry=/  none bind,nosuid,create=dir 0 0\n");
}

TEST_F(LxcLinesTest, TakeMountEntriesAsTheyAre) {
  EXPECT_EQ(written(writeMounts, "/a b none bind 0 0 ;tmpfs  tmpfs  0 0"),
            "entry=/a b none bind 0 0 \nentry=tmpfs  tmpfs  0 0\n");
  EXPECT_EQ(log_, "");
}

TEST_F(LxcLinesTest, AreNoneForAListWithoutElements) {
  for (const Lines lines : {writeRequiredDeviceNodes, writeOptionalDeviceNodes, writeMounts}) {
    EXPECT_EQ(written(lines, "${config:G/None}"), "");
    EXPECT_EQ(written(lines, "x;\nKey="), "");
    EXPECT_EQ(log_, "");
  }
}

// Failures

TEST_F(LxcLinesTest, EndAtARequiredDeviceWithoutANode) {
  nodes_.write("b", "");
  for (const char* const name : {"gone", "gone*", "gone/node"}) {
    const std::string gone = nodes_.path(name);
    EXPECT_EQ(
        written(writeRequiredDeviceNodes, nodes_.path("b") + ";" + gone + ";" + nodes_.path("b")),
        entry("b", "file") + "wrong");
    EXPECT_EQ(log_, "ERROR: Failed to find required device node file '" + gone +
                        "': No such file or directory\n");
  }
}

TEST_F(LxcLinesTest, NameARequiredDeviceAsItIsConfigured) {
  EXPECT_EQ(written(writeRequiredDeviceNodes, "no-such-device*"), "wrong");
  EXPECT_EQ(log_,
            "ERROR: Failed to find required device node file 'no-such-device*': No such file or "
            "directory\n");
}

TEST_F(LxcLinesTest, TellWhyARequiredDeviceWasNotFound) {
  EXPECT_EQ(written(writeRequiredDeviceNodes, "null/node"), "wrong");
  EXPECT_EQ(log_, "ERROR: Failed to find required device node file 'null/node': Not a directory\n");
}

TEST_F(LxcLinesTest, EndAtAnInvalidMountEntry) {
  EXPECT_EQ(written(writeMounts, "/a b none bind 0 0;/c d;/e f none bind 0 0"),
            "entry=/a b none bind 0 0\nwrong");
  EXPECT_EQ(log_,
            "ERROR: Not enough parts in mount entry: /c d\n"
            "ERROR: Invalid mount entry in Key: /c d\n");
}

TEST(LxcCrashLogDirectory, IsWarnedAboutAndLeftOutForAnUnknownOwner) {
  OutputBench bench;
  bench.run.facts.baseUid = Testing::unusedUserId();
  const std::string reason = Testing::reasonForNoUser(bench.run.facts.baseUid);
  const LogCapture log;
  EXPECT_TRUE(writeCrashLogDirectory(bench.context, kEntryRow));
  EXPECT_EQ(bench.written(), "");
  EXPECT_EQ(log.text(), "WARNING: Could not create /tmp/cradle/crashlogs: " + reason + "\n");
}

}  // namespace
}  // namespace Cradle::Generators
