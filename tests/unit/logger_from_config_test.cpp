// SPDX-License-Identifier: MIT
#include <memory>
#include <string>
#include <string_view>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "config_parser.h"
#include "logging/logger_config.h"
#include "support/config_text.h"
#include "support/empty_logger_registry.h"
#include "support/log_capture.h"
#include "support/logger_level.h"
#include "support/lower_case_path.h"
#include "support/output_capture.h"
#include "support/temporary_directory.h"

namespace Cradle::Parser::Logging {
namespace {

using Testing::EmptyLoggerRegistry;
using ::testing::HasSubstr;
using Testing::levelOf;
using Testing::loadText;
using Testing::LogCapture;
using Testing::LowerCasePath;
using Testing::OutputCapture;
using Testing::TemporaryDirectory;

// A logger "a.b" at LogWarning on standard output, which is caught.
class LoggerFromConfig : public ::testing::Test {
 protected:
  LoggerFromConfig() { logger_->setTarget(LoggerConfig::TargetStdout); }

  bool setLevel(std::string_view config) {
    ConfigParser parser(-1);
    return loadText(parser, config) && logger_->setLevel(&parser);
  }

  bool setTarget(std::string_view config) {
    ConfigParser parser(-1);
    return loadText(parser, config) && logger_->setTarget(&parser);
  }

  EmptyLoggerRegistry registry_;
  OutputCapture out_{standardOutput()};
  std::shared_ptr<LoggerConfig> logger_ = LoggerConfig::create("a.b", LoggerConfig::LogWarning);
};

struct Setting {
  const char* config;
  const char* level;
};

constexpr Setting kLevelSettings[] = {
    {"[Logging]\na.b=debug\n", "debug"},
    {"[Logging]\na.b=Error\n", "error"},
    {"[Logging]\na.b=critical\n", "critical"},
    {"[Logging]\na.b=0\n", "critical"},
    {"[Logging]\na.b=4\n", "debug"},
    {"[Logging]\na.b=0x3\n", "info"},
    {"[Logging]\na.b=debug\na.b=error\n", "error"},
    {"[X]\nLevel=info\n[Logging]\na.b=${config:X/Level}\n", "info"},
    {"[X]\nLevel=3\n[Logging]\na.b=${config:X/Level}\n", "info"},
    // Nothing for this logger
    {"", "warning"},
    {"[Logging]\n", "warning"},
    {"[Logging]\na.bc=debug\na=debug\nLogTarget=stderr\n", "warning"},
    {"[logging]\na.b=debug\n", "warning"},
    {"a.b=debug\n", "warning"},
    {"[Logging]\na.b=debug\na.b=\n", "warning"},
};

TEST_F(LoggerFromConfig, TakesTheLevelOfItsIdentity) {
  for (const Setting& row : kLevelSettings) {
    logger_->setLevel(LoggerConfig::LogWarning);
    EXPECT_TRUE(setLevel(row.config)) << row.config;
    EXPECT_EQ(levelOf(*logger_), row.level) << row.config;
  }
  EXPECT_EQ(out_.text(), "");
}

struct TargetSetting {
  const char* config;
  LoggerConfig::Target target;
};

constexpr TargetSetting kTargetSettings[] = {
    {"[Logging]\nLogTarget=stderr\n", LoggerConfig::TargetStderr},
    {"[Logging]\nLogTarget=STDERR\n", LoggerConfig::TargetStderr},
    {"[Logging]\nLogTarget=systemd\n", LoggerConfig::TargetSystemd},
    {"[Logging]\nLogTarget=systemd\nLogTarget=stderr\n", LoggerConfig::TargetStderr},
    {"[X]\nTarget=stderr\n[Logging]\nLogTarget=${config:X/Target}\n", LoggerConfig::TargetStderr},
    // Nothing
    {"", LoggerConfig::TargetStdout},
    {"[Logging]\na.b=debug\nlogtarget=stderr\n", LoggerConfig::TargetStdout},
    {"LogTarget=stderr\n", LoggerConfig::TargetStdout},
    {"[Logging]\nLogTarget=stderr\nLogTarget=\n", LoggerConfig::TargetStdout},
    {"[Logging]\nLogTarget=${config:X/Missing}\n", LoggerConfig::TargetStdout},
};

TEST_F(LoggerFromConfig, TakesTheTargetOfTheConfiguration) {
  for (const TargetSetting& row : kTargetSettings) {
    logger_->setTarget(LoggerConfig::TargetStdout);
    EXPECT_TRUE(setTarget(row.config)) << row.config;
    EXPECT_EQ(logger_->target(), row.target) << row.config;
  }
  EXPECT_EQ(out_.text(), "");
}

TEST_F(LoggerFromConfig, WritesToAFileInLowerCase) {
  const TemporaryDirectory directory;
  const LowerCasePath path(directory.path());
  EXPECT_TRUE(setTarget("[Logging]\nLogTarget=" + path.of("My.log") + "\n"));
  EXPECT_EQ(logger_->target(), LoggerConfig::TargetFile);
  logger_->warning() << "text";
  EXPECT_EQ(directory.read("my.log"), "WARNING: text\n");
}

TEST_F(LoggerFromConfig, DoesNotAskForALevelThatIsNotThere) {
  const LogCapture log;
  ConfigParser parser(-1);
  parser.addKnownKey("G", "K", SingleValue);
  EXPECT_TRUE(logger_->setLevel(&parser));
  EXPECT_EQ(log.text(), "");
}

TEST_F(LoggerFromConfig, AsksForAnUndeclaredTargetThoughItIsNotThere) {
  const LogCapture log;
  ConfigParser parser(-1);
  parser.addKnownKey("G", "K", SingleValue);
  EXPECT_TRUE(logger_->setTarget(&parser));
  EXPECT_EQ(log.text(), "WARNING: Logging/LogTarget has not been added to the parser\n");
}

// Failures

TEST_F(LoggerFromConfig, RefusesAnyOtherLevelAndKeepsItsOwn) {
  for (const std::string level : {"5", "-1", "loud", "debug ", " error", "2 ", "1.0"}) {
    EXPECT_FALSE(setLevel("[Logging]\na.b=" + level + "\n")) << level;
    EXPECT_EQ(out_.take(), "ERROR: Invalid logging level '" + level + "' from config\n");
    EXPECT_EQ(levelOf(*logger_), "warning") << level;
  }
}

TEST_F(LoggerFromConfig, RefusesALevelThatResolvesToNothing) {
  EXPECT_FALSE(setLevel("[Logging]\na.b=${config:X/Missing}\n"));
  EXPECT_EQ(out_.text(), "ERROR: Invalid logging level '' from config\n");
}

// The value is read as a text and then as a number.
TEST_F(LoggerFromConfig, RefusesALevelThatRefersToItself) {
  const LogCapture log;
  logger_->setTarget(LoggerConfig::TargetStderr);
  EXPECT_FALSE(setLevel("[Logging]\na.b=x${config:Logging/a.b}\n"));
  EXPECT_EQ(log.text(),
            "ERROR: Max depth reached, possibly circular reference.\n"
            "ERROR: Max depth reached, possibly circular reference.\n"
            "ERROR: Invalid logging level '' from config\n");
  EXPECT_EQ(levelOf(*logger_), "warning");
}

TEST_F(LoggerFromConfig, RefusesAnyOtherTargetAndKeepsItsOwn) {
  for (const std::string target : {"SysLog", "relative/My.log", "stderr ", "/dev/null/My.log"}) {
    EXPECT_FALSE(setTarget("[Logging]\nLogTarget=" + target + "\n")) << target;
    EXPECT_EQ(out_.take(), "ERROR: Invalid logging target '" + target + "' from config\n");
    EXPECT_EQ(logger_->target(), LoggerConfig::TargetStdout) << target;
  }
}

TEST(LoggerFromConfigDeathTest, NeedsAParser) {
  const EmptyLoggerRegistry registry;
  const auto logger = LoggerConfig::create("a.b", LoggerConfig::LogWarning);
  const ConfigParser* const none = nullptr;
  EXPECT_DEATH(logger->setLevel(none), HasSubstr("Assertion `config' failed"));
  EXPECT_DEATH(logger->setTarget(none), HasSubstr("Assertion `config' failed"));
}

}  // namespace
}  // namespace Cradle::Parser::Logging
