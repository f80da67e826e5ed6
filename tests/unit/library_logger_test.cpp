// SPDX-License-Identifier: MIT
#include "library_logger.h"

#include <cstdlib>
#include <iostream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/logger_level.h"

namespace Cradle::Parser {
namespace {

using Logging::LoggerConfig;
using ::testing::HasSubstr;
using Testing::levelOf;

TEST(LibraryLogger, HasItsIdentity) {
  EXPECT_STREQ(kLibraryLoggerIdent, "com.corvid.cradle.lib.ConfigParser");
  EXPECT_STREQ(libraryLogger().ident(), kLibraryLoggerIdent);
}

TEST(LibraryLogger, IsRegistered) {
  EXPECT_EQ(LoggerConfig::find("com.corvid.cradle.lib.ConfigParser").get(), &libraryLogger());
}

[[noreturn]] void showSettings() {
  std::cerr << levelOf(libraryLogger()) << " to target "
            << static_cast<int>(libraryLogger().target()) << '\n';
  std::exit(0);
}

// Other tests set the logger to their needs; only a new process has it as it begins.
TEST(LibraryLoggerDeathTest, BeginsWithWarningsForTheJournal) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(showSettings(), ::testing::ExitedWithCode(0), HasSubstr("warning to target 0\n"));
}

}  // namespace
}  // namespace Cradle::Parser
