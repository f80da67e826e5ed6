// SPDX-License-Identifier: MIT
#include "side_effects.h"

#include <cerrno>
#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include "generators/user_database.h"
#include "run_command.h"
#include "support/log_capture.h"
#include "support/temporary_directory.h"
#include "support/users.h"

namespace Cradle::Parser {
namespace {

using Testing::LogCapture;
using Testing::TemporaryDirectory;

std::string toldRefusals;

void note(const std::string& what) {
  toldRefusals += what + "\n";
}

// Nothing is done while a test of these runs.
class SideEffects : public ::testing::Test {
 protected:
  SideEffects() {
    toldRefusals.clear();
    refuseSideEffects(note);
  }
  ~SideEffects() override { refuseSideEffects(nullptr); }
};

TEST_F(SideEffects, AreToldWhereTheyAreRefused) {
  EXPECT_TRUE(isRefused("one"));
  EXPECT_TRUE(isDirectoryRefused("two"));
  EXPECT_EQ(toldRefusals, "run one\nmake the directory two\n");
}

TEST_F(SideEffects, AreAllowedAgain) {
  refuseSideEffects(nullptr);
  EXPECT_FALSE(isRefused("one"));
  EXPECT_EQ(toldRefusals, "");
}

TEST_F(SideEffects, IncludeCommands) {
  const LogCapture log;
  std::int32_t status = 0;
  EXPECT_EQ(runCommand("echo x", {}, &status), "");
  EXPECT_EQ(status, -1);
  EXPECT_EQ(toldRefusals, "run echo x\n");
  EXPECT_EQ(log.text(), "");
}

TEST_F(SideEffects, IncludeDirectories) {
  const TemporaryDirectory directory;
  EXPECT_TRUE(Generators::makeUserDirectory(directory.path("d"), 0750, 0));
  EXPECT_FALSE(std::filesystem::exists(directory.path("d")));
  EXPECT_EQ(toldRefusals, "make the directory " + directory.path("d") + "\n");
}

TEST_F(SideEffects, EndAsTheyWouldForDirectories) {
  const TemporaryDirectory directory;
  constexpr std::uint32_t kDaemon = 1;
  EXPECT_TRUE(Generators::makeUserDirectory(directory.path(), 0750, Testing::thisUser().uid));
  EXPECT_TRUE(Generators::makeUserDirectory(directory.path(), 0750, kDaemon));
  EXPECT_FALSE(Generators::makeUserDirectory(directory.path(), 0750, Testing::unusedUserId()));
  errno = 0;
  EXPECT_FALSE(Generators::makeUserDirectory(directory.path("no/d"), 0750, 0));
  EXPECT_EQ(errno, ENOENT);
}

}  // namespace
}  // namespace Cradle::Parser
