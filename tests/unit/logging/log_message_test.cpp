// SPDX-License-Identifier: MIT
#include "logging/log_message.h"

#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>

#include <dlfcn.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "logging/log_level.h"
#include "logging/logger_config.h"
#include "support/empty_logger_registry.h"
#include "support/lower_case_path.h"
#include "support/output_capture.h"
#include "support/temporary_directory.h"

namespace Cradle::Parser::Logging {
namespace {

using Testing::EmptyLoggerRegistry;
using ::testing::HasSubstr;
using Testing::LowerCasePath;
using Testing::OutputCapture;
using Testing::TemporaryDirectory;

constexpr Level kAllLevels[] = {Level::LogCritical, Level::LogError, Level::LogWarning,
                                Level::LogInfo, Level::LogDebug};

// A logger on standard output, which is caught.
class LogMessages : public ::testing::Test {
 protected:
  LogMessages() { logger_->setTarget(LoggerConfig::TargetStdout); }

  EmptyLoggerRegistry registry_;
  OutputCapture out_{standardOutput()};
  std::shared_ptr<LoggerConfig> logger_ = LoggerConfig::create("a.b", LoggerConfig::LogWarning);
};

TEST_F(LogMessages, PrintTheirPartsInOrderOnOneLine) {
  logger_->warning() << "x"
                     << "y";
  EXPECT_EQ(out_.text(), "WARNING: xy\n");
}

TEST_F(LogMessages, AreMadeOfTextsCharactersAndNumbers) {
  const std::string text = "text";
  const std::string_view view = "view";
  logger_->error() << "literal " << text << ' ' << view << '\'' << 0 << ' ' << -12 << ' '
                   << std::uint32_t{4294967295} << ' ' << std::size_t{7};
  EXPECT_EQ(out_.text(), "ERROR: literal text view'0 -12 4294967295 7\n");
}

TEST_F(LogMessages, ShowANullTextAsSuch) {
  const char* const null = nullptr;
  logger_->error() << "[" << null << "]";
  EXPECT_EQ(out_.text(), "ERROR: [(null)]\n");
}

TEST_F(LogMessages, KeepZeroBytes) {
  logger_->error() << std::string("a\0b", 3) << '\0';
  EXPECT_EQ(out_.text(), std::string("ERROR: a\0b\0\n", 12));
}

TEST_F(LogMessages, PrintALineForOneEmptyPart) {
  logger_->error() << "";
  EXPECT_EQ(out_.text(), "ERROR: \n");
}

TEST_F(LogMessages, PrintNothingWithoutParts) {
  logger_->setLevel(LoggerConfig::LogDebug);
  for (const Level level : kAllLevels) {
    const LogMessage message(logger_.get(), level);
  }
  EXPECT_EQ(out_.text(), "");
}

TEST_F(LogMessages, AreMadeByTheirLoggerForEachLevel) {
  logger_->setLevel(LoggerConfig::LogDebug);
  logger_->critical() << "1";
  logger_->error() << "2";
  logger_->warning() << "3";
  logger_->info() << "4";
  logger_->debug() << "5";
  EXPECT_EQ(out_.text(), "CRITICAL: 1\nERROR: 2\nWARNING: 3\nINFO: 4\nDEBUG: 5\n");
}

TEST_F(LogMessages, ArePrintedUpToTheLevelOfTheirLogger) {
  for (const Level threshold : kAllLevels) {
    logger_->setLevel(threshold);
    for (const Level level : kAllLevels) {
      LogMessage(logger_.get(), level) << "text";
      EXPECT_EQ(!out_.take().empty(), level <= threshold)
          << levelRow(level).printedName << " at " << levelRow(threshold).printedName;
    }
  }
}

TEST_F(LogMessages, KnowTheirLevelPrintedOrNot) {
  for (const Level level : kAllLevels) {
    EXPECT_EQ(LogMessage(logger_.get(), level).level(), level);
    EXPECT_EQ(LogMessage(nullptr, level).level(), level);
  }
}

TEST_F(LogMessages, ArePrintedWhenTheyAreFinished) {
  {
    LogMessage message = logger_->error();
    message << "a";
    EXPECT_EQ(out_.text(), "");
    message << "b";
  }
  EXPECT_EQ(out_.text(), "ERROR: ab\n");
}

TEST_F(LogMessages, KeepTheTargetThatTheLoggerHadWhenTheyWereMade) {
  const OutputCapture err(standardError());
  {
    LogMessage message = logger_->error();
    logger_->setTarget(LoggerConfig::TargetStderr);
    message << "text";
  }
  EXPECT_EQ(out_.text(), "ERROR: text\n");
  EXPECT_EQ(err.text(), "");
}

TEST_F(LogMessages, KeepAFileThatTheLoggerHasLeft) {
  const TemporaryDirectory directory;
  ASSERT_TRUE(logger_->setTarget(LowerCasePath(directory.path()).of("my.log")));
  {
    LogMessage message = logger_->error();
    logger_->setTarget(LoggerConfig::TargetStdout);
    message << "text";
  }
  EXPECT_EQ(directory.read("my.log"), "ERROR: text\n");
  EXPECT_EQ(out_.text(), "");
}

TEST_F(LogMessages, FollowTheThresholdThatTheLoggerHadWhenTheyWereMade) {
  {
    LogMessage enabled = logger_->warning();
    LogMessage disabled = logger_->info();
    logger_->setLevel(LoggerConfig::LogError);
    enabled << "enabled";
    logger_->setLevel(LoggerConfig::LogDebug);
    disabled << "disabled";
  }
  EXPECT_EQ(out_.text(), "WARNING: enabled\n");
}

TEST_F(LogMessages, LeaveTheCallersErrorNumberAlone) {
  standardOutput() = OutputFile("/dev/full");
  errno = ENOENT;
  logger_->error() << "text";
  EXPECT_EQ(errno, ENOENT);
  EXPECT_FALSE(standardOutput().good());
}

[[noreturn]] void logToJournal() {
  if (dlopen(SYSTEMD_STUB, RTLD_NOW) != nullptr) {
    const auto logger = LoggerConfig::create("a.b", LoggerConfig::LogWarning);
    logger->warning() << "x"
                      << "y";
  }
  std::exit(0);
}

// The library for the journal can be replaced only in a process that has not opened it yet.
TEST(LogMessageDeathTest, GoesToTheJournalInOnePieceWithoutLevelAndIdentity) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(logToJournal(), ::testing::ExitedWithCode(0), HasSubstr("journal <4> <%s> <xy>\n"));
}

// Failures

TEST_F(LogMessages, AreDroppedWithoutALogger) {
  const OutputCapture err(standardError());
  for (const Level level : kAllLevels) {
    LogMessage(nullptr, level) << "text";
  }
  EXPECT_EQ(out_.text() + err.text(), "");
}

TEST_F(LogMessages, AreDroppedWhileTheFileCannotBeWritten) {
  out_.spoil();
  logger_->error() << "lost";
  out_.mend();
  logger_->error() << "printed";
  EXPECT_EQ(out_.text(), "ERROR: printed\n");
}

}  // namespace
}  // namespace Cradle::Parser::Logging
