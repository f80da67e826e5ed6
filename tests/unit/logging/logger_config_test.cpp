// SPDX-License-Identifier: MIT
#include "logging/logger_config.h"

#include <memory>
#include <string>
#include <string_view>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "logging/log_level.h"
#include "support/child_process.h"
#include "support/empty_logger_registry.h"
#include "support/logger_level.h"
#include "support/lower_case_path.h"
#include "support/output_capture.h"
#include "support/temporary_directory.h"

namespace Cradle::Parser::Logging {
namespace {

using Testing::EmptyLoggerRegistry;
using ::testing::HasSubstr;
using Testing::levelOf;
using Testing::LowerCasePath;
using Testing::nextDescriptor;
using Testing::OutputCapture;
using Testing::TemporaryDirectory;

// Identities

TEST(LoggerIdentity, IsValidWithADot) {
  for (const char* const ident : {"a.b", ".", "..", "com.corvid.cradle.lib.ConfigParser", "-._",
                                  "0.9", "A-Z_a-z.0-9", "a."}) {
    EXPECT_TRUE(LoggerConfig::identIsValid(ident)) << ident;
  }
}

TEST(LoggerIdentity, IsInvalidWithoutADot) {
  for (const char* const ident : {"", "a", "a-b", "a_b", "ConfigParser"}) {
    EXPECT_FALSE(LoggerConfig::identIsValid(ident)) << ident;
  }
}

TEST(LoggerIdentity, ConsistsOfLettersDigitsAndThreeOtherCharacters) {
  constexpr std::string_view kAllowed =
      "-.0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ_abcdefghijklmnopqrstuvwxyz";
  for (int byte = 1; byte < 256; ++byte) {
    const char character = static_cast<char>(byte);
    const std::string ident = std::string("a.") + character + "b";
    EXPECT_EQ(LoggerConfig::identIsValid(ident.c_str()),
              kAllowed.find(character) != std::string_view::npos)
        << "byte " << byte;
  }
}

// Each test begins without loggers and with one that prints to standard output, which is caught.
class Logger : public ::testing::Test {
 protected:
  Logger() { logger_->setTarget(LoggerConfig::TargetStdout); }

  EmptyLoggerRegistry registry_;
  OutputCapture out_{standardOutput()};
  OutputCapture err_{standardError()};
  TemporaryDirectory directory_;
  LowerCasePath path_{directory_.path()};
  std::shared_ptr<LoggerConfig> logger_ = LoggerConfig::create("a.b", LoggerConfig::LogError);
};

TEST_F(Logger, IsCreatedWithItsLevelForTheJournal) {
  for (const LevelRow& row : kLevels) {
    const std::string ident = "new." + std::string(row.inputName);
    const auto created = LoggerConfig::create(ident.c_str(), row.level);
    EXPECT_EQ(created->ident(), ident);
    EXPECT_EQ(levelOf(*created), row.inputName);
    EXPECT_EQ(created->target(), LoggerConfig::TargetSystemd) << ident;
  }
}

TEST_F(Logger, KeepsACopyOfItsIdentity) {
  std::string ident = "x.y";
  const auto created = LoggerConfig::create(ident.c_str(), LoggerConfig::LogError);
  ident = "z.z";
  EXPECT_STREQ(created->ident(), "x.y");
}

TEST_F(Logger, IsFoundByExactlyItsIdentity) {
  EXPECT_EQ(LoggerConfig::find("a.b"), logger_);
  for (const char* const other : {"", "a", "a.", "a.b.c", "A.B", ".b"}) {
    EXPECT_EQ(LoggerConfig::find(other), nullptr) << other;
  }
}

TEST_F(Logger, IsUsedAgainWithAWarningAndTheNewLevel) {
  logger_->setLevel(LoggerConfig::LogWarning);
  EXPECT_EQ(LoggerConfig::create("a.b", LoggerConfig::LogCritical), logger_);
  EXPECT_EQ(out_.text(), "WARNING: Reusing logger for identity: a.b\n");
  EXPECT_EQ(levelOf(*logger_), "critical");
  EXPECT_EQ(logger_->target(), LoggerConfig::TargetStdout);
}

TEST_F(Logger, WarnsAtItsOldLevelWhenItIsUsedAgain) {
  EXPECT_EQ(LoggerConfig::create("a.b", LoggerConfig::LogDebug), logger_);
  EXPECT_EQ(out_.text(), "");
  EXPECT_EQ(levelOf(*logger_), "debug");
}

TEST_F(Logger, IsEnabledForItsLevelAndTheMoreSevereOnes) {
  for (const LevelRow& threshold : kLevels) {
    EXPECT_TRUE(logger_->setLevel(threshold.level));
    for (const LevelRow& row : kLevels) {
      EXPECT_EQ(logger_->isEnabled(row.level), row.level <= threshold.level)
          << row.inputName << " at " << threshold.inputName;
    }
  }
}

struct LevelText {
  const char* text;
  const char* level;
};

constexpr LevelText kLevelTexts[] = {
    {"critical", "critical"}, {"error", "error"}, {"warning", "warning"}, {"info", "info"},
    {"debug", "debug"},       {"Debug", "debug"}, {"DEBUG", "debug"},     {"0", "critical"},
    {"1", "error"},           {"2", "warning"},   {"3", "info"},          {"4", "debug"},
    {"0x3", "info"},          {" 2", "warning"},  {"+1", "error"},        {"00", "critical"},
};

TEST_F(Logger, TakesALevelByNameOrNumber) {
  for (const LevelText& row : kLevelTexts) {
    const std::string_view otherLevel = row.level == std::string_view("info") ? "debug" : "info";
    logger_->setLevel(std::string(otherLevel));
    EXPECT_TRUE(logger_->setLevel(std::string(row.text))) << row.text;
    EXPECT_EQ(levelOf(*logger_), row.level) << row.text;
  }
  EXPECT_EQ(out_.text(), "");
}

TEST_F(Logger, TakesEveryTargetButAFileByValue) {
  for (const LoggerConfig::Target target :
       {LoggerConfig::TargetStderr, LoggerConfig::TargetSystemd, LoggerConfig::TargetStdout}) {
    EXPECT_TRUE(logger_->setTarget(target));
    EXPECT_EQ(logger_->target(), target);
  }
  EXPECT_EQ(out_.text() + err_.text(), "");
}

TEST_F(Logger, PrintsToTheTargetThatItHas) {
  logger_->error() << "1";
  logger_->setTarget(LoggerConfig::TargetStderr);
  logger_->error() << "2";
  logger_->setTarget(path_.of("my.log"));
  logger_->error() << "3";
  EXPECT_EQ(out_.text(), "ERROR: 1\n");
  EXPECT_EQ(err_.text(), "ERROR: 2\n");
  EXPECT_EQ(directory_.read("my.log"), "ERROR: 3\n");
}

struct TargetText {
  const char* text;
  LoggerConfig::Target target;
};

constexpr TargetText kTargetTexts[] = {
    {"systemd", LoggerConfig::TargetSystemd}, {"stdout", LoggerConfig::TargetStdout},
    {"stderr", LoggerConfig::TargetStderr},   {"SystemD", LoggerConfig::TargetSystemd},
    {"STDOUT", LoggerConfig::TargetStdout},   {"StdErr", LoggerConfig::TargetStderr},
};

TEST_F(Logger, TakesATargetByName) {
  for (const TargetText& row : kTargetTexts) {
    EXPECT_TRUE(logger_->setTarget(std::string(row.text))) << row.text;
    EXPECT_EQ(logger_->target(), row.target) << row.text;
  }
  EXPECT_EQ(out_.text() + err_.text(), "");
}

TEST_F(Logger, TakesAFileByItsPathInLowerCase) {
  EXPECT_TRUE(logger_->setTarget(path_.of("My.log")));
  EXPECT_EQ(logger_->target(), LoggerConfig::TargetFile);
  logger_->error() << "text";
  EXPECT_EQ(directory_.read("my.log"), "ERROR: text\n");
}

TEST_F(Logger, ClosesAFileThatItLeaves) {
  const int descriptor = nextDescriptor();
  logger_->setTarget(path_.of("my.log"));
  EXPECT_GT(nextDescriptor(), descriptor);
  logger_->setTarget(LoggerConfig::TargetSystemd);
  EXPECT_EQ(nextDescriptor(), descriptor);
  logger_->setTarget(path_.of("my.log"));
  logger_->setTarget(std::string("stdout"));
  EXPECT_EQ(nextDescriptor(), descriptor);
}

TEST_F(Logger, ClosesAFileThatItLeavesForAnother) {
  const int descriptor = nextDescriptor();
  logger_->setTarget(path_.of("first.log"));
  logger_->setTarget(path_.of("second.log"));
  // The second was opened while the first still was, so the number of the first is free again.
  EXPECT_EQ(nextDescriptor(), descriptor);
  logger_->error() << "text";
  EXPECT_EQ(directory_.read("first.log") + "|" + directory_.read("second.log"), "|ERROR: text\n");
}

// Failures

TEST_F(Logger, RefusesAnyOtherLevelAndKeepsItsOwn) {
  for (const std::string text :
       {"5", "-1", "loud", "", "debug ", " debug", "1 ", "4.0", "0X1", "4294967296", "LogDebug"}) {
    EXPECT_FALSE(logger_->setLevel(text)) << text;
    EXPECT_EQ(out_.take(), "ERROR: Invalid logging level '" + text + "'\n");
    EXPECT_EQ(levelOf(*logger_), "error") << text;
  }
}

TEST_F(Logger, RefusesAFileByValue) {
  EXPECT_FALSE(logger_->setTarget(LoggerConfig::TargetFile));
  EXPECT_EQ(out_.text(),
            "ERROR: Cannot set file logging target with LoggerConfig::setTarget(Target)\n");
  EXPECT_EQ(logger_->target(), LoggerConfig::TargetStdout);
}

TEST_F(Logger, RefusesAnyOtherTargetNamingItAsGivenAndKeepsItsOwn) {
  for (const std::string& text :
       {std::string("SysLog"), std::string(), std::string("Relative/My.log"),
        std::string("stdout "), path_.of("Missing/My.log")}) {
    EXPECT_FALSE(logger_->setTarget(text)) << text;
    EXPECT_EQ(out_.take(), "ERROR: Invalid logging target '" + text + "'\n");
    EXPECT_EQ(logger_->target(), LoggerConfig::TargetStdout) << text;
  }
}

TEST_F(Logger, RefusesAStandardFileThatCannotBeWritten) {
  err_.spoil();
  EXPECT_FALSE(logger_->setTarget(std::string("stderr")));
  EXPECT_EQ(out_.text(), "ERROR: Invalid logging target 'stderr'\n");
  EXPECT_EQ(logger_->target(), LoggerConfig::TargetStdout);
}

TEST_F(Logger, GoesOnWithItsFileAfterAnInvalidTarget) {
  logger_->setTarget(path_.of("my.log"));
  EXPECT_FALSE(logger_->setTarget(std::string("syslog")));
  EXPECT_FALSE(logger_->setTarget(LoggerConfig::TargetFile));
  EXPECT_EQ(directory_.read("my.log"),
            "ERROR: Invalid logging target 'syslog'\n"
            "ERROR: Cannot set file logging target with LoggerConfig::setTarget(Target)\n");
}

TEST_F(Logger, ReportsAnInvalidSettingOnlyAtAnEnabledLevel) {
  logger_->setLevel(LoggerConfig::LogCritical);
  EXPECT_FALSE(logger_->setLevel(std::string("loud")));
  EXPECT_FALSE(logger_->setTarget(std::string("syslog")));
  EXPECT_EQ(out_.text(), "");
}

TEST(LoggerDeathTest, CannotBeCreatedWithAnInvalidIdentity) {
  for (const char* const ident : {"", "a", "a b.c", "a.b/c"}) {
    EXPECT_DEATH(LoggerConfig::create(ident, LoggerConfig::LogError),
                 HasSubstr("Assertion `identIsValid(ident)' failed"))
        << ident;
  }
}

}  // namespace
}  // namespace Cradle::Parser::Logging
