// SPDX-License-Identifier: MIT
#include "generators/lxc_config.h"

#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include "support/log_capture.h"
#include "support/temporary_directory.h"
#include "support/users.h"

namespace Cradle::Generators {
namespace {

using Testing::LogCapture;
using Testing::TemporaryDirectory;
using Testing::thisUser;

class LxcConfigTest : public ::testing::Test {
 protected:
  int generate(const std::string& output) {
    const LogCapture log;
    const int status = generateLxc(output, {directory_.path("c"), directory_.path("d")},
                                   thisUser().uid, "inst", 7);
    log_ = log.text();
    return status;
  }

  // The lines behind those of the table.
  std::string tail() {
    EXPECT_EQ(generate(directory_.path("out")), 0);
    const std::string text = directory_.read("out");
    const std::string last = " system/quoll.prop none bind,ro,nodev,nosuid,create=file 0 0\n";
    const std::size_t end = text.find(last);
    EXPECT_NE(end, std::string::npos) << text;
    return text.substr(end + last.size());
  }

  // The frame of a fragment.
  std::string framed(const std::string& file, const std::string& text) const {
    const std::string path = directory_.path(file);
    return "\n# " + path + " content\n" + text + "# end of " + path + " content\n";
  }

  TemporaryDirectory directory_;
  std::string log_;
};

constexpr const char* kEcho = "echo \"/$4 $2 none bind 0 0\"\n";
constexpr const char* kStored = "[GeneratedConfig]\nUserId=42\nUser=u\nHome=/h\nBaseUid=0\n";

TEST_F(LxcConfigTest, BeginsWithTheRowsOfTheTable) {
  directory_.write("c/x.conf", "[Config]\nArch=x86_64\n");
  EXPECT_EQ(generate(directory_.path("out")), 0);
  EXPECT_TRUE(directory_.read("out").starts_with("lxc.arch = x86_64\nlxc.no_new_privs = 1\n"));
  EXPECT_EQ(log_, "");
}

TEST_F(LxcConfigTest, EndsWithHooksAndFragmentsDirectoryByDirectory) {
  directory_.write("c/x.conf", "[G]\nKey=1\n");
  directory_.write("c/static/b.lxc", "b = 1");
  directory_.write("c/static/a.lxc", "a = 1\n\na = 2\n");
  directory_.write("c/static/a.ro", "no\n");
  directory_.writeScript("c/mount-hooks/a.sh", kEcho);
  directory_.writeScript("d/mount-hooks/a.sh", "echo /d d none bind 0 0\n");
  EXPECT_EQ(tail(), "lxc.mount.entry = /inst " + thisUser().name + " none bind 0 0\n" +
                        framed("c/static/a.lxc", "a = 1\n\na = 2\n") +
                        framed("c/static/b.lxc", "b = 1\n") +
                        "lxc.mount.entry = /d d none bind 0 0\n");
}

TEST_F(LxcConfigTest, RunsHooksWithoutArgumentsForAGeneratedConfiguration) {
  directory_.write("c/x.conf", std::string(kStored) + "DefaultLxc=lxc.a = 1\nDefaultLxc=#b\n");
  directory_.writeScript("c/mount-hooks/a.sh", "echo \"/$# d none bind 0 0\"\n");
  directory_.write("c/static/a.lxc", "a = 1\n");
  EXPECT_EQ(tail(), "lxc.mount.entry = /0 d none bind 0 0\n" + framed("c/static/a.lxc", "a = 1\n") +
                        "# generated-config-default.lxc content\nlxc.a = 1\n#b\n"
                        "# end of generated-config-default.lxc content\n");
}

// Failures

TEST_F(LxcConfigTest, WritesNothingWithoutConfiguration) {
  EXPECT_EQ(generate(directory_.path("out")), 1);
  EXPECT_EQ(log_, "ERROR: No configuration to read in " + directory_.path("c") + ", " +
                      directory_.path("d") + "\n");
  EXPECT_FALSE(std::filesystem::exists(directory_.path("out")));
}

TEST_F(LxcConfigTest, KeepsTheLinesBeforeAWrongValue) {
  directory_.write("c/x.conf", "[Config]\nMounts=/a b\n");
  directory_.writeScript("c/mount-hooks/a.sh", kEcho);
  EXPECT_EQ(generate(directory_.path("out")), 1);
  EXPECT_TRUE(directory_.read("out").ends_with(
      "\nlxc.mount.entry = . run/display none rbind,nodev,nosuid,create=dir 0 0\n"));
  EXPECT_EQ(log_,
            "ERROR: Not enough parts in mount entry: /a b\n"
            "ERROR: Invalid mount entry in Mounts: /a b\n");
}

TEST_F(LxcConfigTest, DropsAnInvalidEntryOfAHookWithAWarning) {
  directory_.write("c/x.conf", "[G]\nKey=1\n");
  const std::string hook =
      directory_.writeScript("c/mount-hooks/a.sh", "echo nothing\necho /d d none bind 0 0\n");
  EXPECT_EQ(tail(), "lxc.mount.entry = /d d none bind 0 0\n");
  EXPECT_EQ(log_,
            "ERROR: Not enough parts in mount entry: nothing\nWARNING: Invalid mount entry from " +
                hook + ": nothing\n");
}

TEST_F(LxcConfigTest, SucceedsThoughTheFileCannotBeWritten) {
  directory_.write("c/x.conf", "[G]\nKey=1\n");
  EXPECT_EQ(generate(directory_.path("missing/out")), 0);
  EXPECT_EQ(log_, "");
}

}  // namespace
}  // namespace Cradle::Generators
