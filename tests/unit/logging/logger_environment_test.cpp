// SPDX-License-Identifier: MIT
#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "config_parser.h"
#include "logging/logger_config.h"
#include "support/config_text.h"
#include "support/empty_logger_registry.h"
#include "support/environment_variable.h"
#include "support/logger_level.h"
#include "support/lower_case_path.h"
#include "support/output_capture.h"
#include "support/temporary_directory.h"

namespace Cradle::Parser::Logging {
namespace {

using Testing::EmptyLoggerRegistry;
using Testing::EnvironmentVariable;
using Testing::levelOf;
using Testing::loadText;
using Testing::LowerCasePath;
using Testing::OutputCapture;
using Testing::TemporaryDirectory;

// Two loggers "a.b" and "c.d" at LogWarning on standard output, which is caught.
class Configure : public ::testing::Test {
 protected:
  Configure() {
    first_->setTarget(LoggerConfig::TargetStdout);
    second_->setTarget(LoggerConfig::TargetStdout);
  }

  // Configures with the two variables set as given, unset where null, and the configuration, if
  // any. Returns the levels of the two loggers.
  std::string configure(const char* levels, const char* target,
                        const ConfigParser* config = nullptr) {
    const EnvironmentVariable levelVariable("CRADLE_LOGGING", levels);
    const EnvironmentVariable targetVariable("CRADLE_LOGGING_TARGET", target);
    LoggerConfig::configure(config);
    return std::string(levelOf(*first_)) + " " + std::string(levelOf(*second_));
  }

  EmptyLoggerRegistry registry_;
  OutputCapture out_{standardOutput()};
  OutputCapture err_{standardError()};
  std::shared_ptr<LoggerConfig> first_ = LoggerConfig::create("a.b", LoggerConfig::LogWarning);
  std::shared_ptr<LoggerConfig> second_ = LoggerConfig::create("c.d", LoggerConfig::LogWarning);
};

struct EnvironmentLevels {
  const char* variable;
  const char* levels;
};

constexpr EnvironmentLevels kEnvironmentLevels[] = {
    {nullptr, "warning warning"},
    {"", "warning warning"},
    {";;", "warning warning"},
    {"a.b=debug", "debug warning"},
    {"c.d=debug", "warning debug"},
    {"a.b=info;c.d=error", "info error"},
    {"c.d=error;a.b=info", "info error"},
    {";c.d=4;", "warning debug"},
    {"a.b=DEBUG", "debug warning"},
    {"a.b=0x3", "info warning"},
    // Other loggers
    {"x.y=info;c.d=debug", "warning debug"},
    {"x.y=info", "warning warning"},
    {"a.bc=debug", "warning warning"},
    {"xa.b=debug", "warning warning"},
    {"A.B=debug", "warning warning"},
    {" a.b=debug", "warning warning"},
    {"a.b =debug", "warning warning"},
    // The first item counts
    {"a.b=debug;a.b=error", "debug warning"},
    {"a.b=;a.b=error", "warning warning"},
    // Without a level
    {"a.b", "warning warning"},
    {"a.b=", "warning warning"},
    {"a.b=;c.d=debug", "warning debug"},
};

TEST_F(Configure, SetsTheLevelsThatTheEnvironmentNames) {
  for (const EnvironmentLevels& row : kEnvironmentLevels) {
    first_->setLevel(LoggerConfig::LogWarning);
    second_->setLevel(LoggerConfig::LogWarning);
    EXPECT_EQ(configure(row.variable, nullptr), row.levels)
        << (row.variable == nullptr ? "unset" : row.variable);
  }
  EXPECT_EQ(out_.text(), "");
}

TEST_F(Configure, SetsTheTargetOfEveryLogger) {
  configure(nullptr, "StdErr");
  EXPECT_EQ(first_->target(), LoggerConfig::TargetStderr);
  EXPECT_EQ(second_->target(), LoggerConfig::TargetStderr);
}

TEST_F(Configure, LeavesTheTargetsAloneWithoutAVariable) {
  for (const char* const variable : {static_cast<const char*>(nullptr), ""}) {
    configure("a.b=info", variable);
    EXPECT_EQ(first_->target(), LoggerConfig::TargetStdout);
    EXPECT_EQ(second_->target(), LoggerConfig::TargetStdout);
  }
  EXPECT_EQ(out_.text(), "");
}

TEST_F(Configure, OpensAFileForEachLoggerOnItsOwn) {
  const TemporaryDirectory directory;
  const LowerCasePath path(directory.path());
  directory.write("my.log", "old contents\n");
  configure(nullptr, path.of("My.log").c_str());
  EXPECT_EQ(directory.read("my.log"), "");
  // Open twice, each at the beginning of the file: the later line overwrites the earlier one.
  first_->warning() << "first";
  second_->warning() << "other";
  EXPECT_EQ(directory.read("my.log"), "WARNING: other\n");
}

TEST_F(Configure, ReadsTheEnvironmentAnewEachTime) {
  EXPECT_EQ(configure("a.b=debug", nullptr), "debug warning");
  EXPECT_EQ(configure("a.b=error", nullptr), "error warning");
  EXPECT_EQ(configure(nullptr, nullptr), "error warning");
}

TEST_F(Configure, AppliesTheConfiguration) {
  ConfigParser config(-1);
  ASSERT_TRUE(loadText(config, "[Logging]\na.b=debug\nLogTarget=stderr\n"));
  EXPECT_EQ(configure(nullptr, nullptr, &config), "debug warning");
  EXPECT_EQ(first_->target(), LoggerConfig::TargetStderr);
  EXPECT_EQ(second_->target(), LoggerConfig::TargetStderr);
}

TEST_F(Configure, LetsTheEnvironmentOverrideTheConfiguration) {
  ConfigParser config(-1);
  ASSERT_TRUE(loadText(config, "[Logging]\na.b=debug\nc.d=debug\nLogTarget=stderr\n"));
  EXPECT_EQ(configure("a.b=error", "systemd", &config), "error debug");
  EXPECT_EQ(first_->target(), LoggerConfig::TargetSystemd);
  EXPECT_EQ(second_->target(), LoggerConfig::TargetSystemd);
}

// Failures

TEST_F(Configure, ReportsAnInvalidLevelThroughTheLoggerItself) {
  second_->setTarget(LoggerConfig::TargetStderr);
  EXPECT_EQ(configure("a.b=loud;c.d=5;a.b=debug", nullptr), "warning warning");
  EXPECT_EQ(out_.text(), "ERROR: Invalid logging level 'loud'\n");
  EXPECT_EQ(err_.text(), "ERROR: Invalid logging level '5'\n");
}

TEST_F(Configure, ReportsAnInvalidTargetThroughEveryLogger) {
  configure(nullptr, "SysLog");
  EXPECT_EQ(out_.text(),
            "ERROR: Invalid logging target 'SysLog'\n"
            "ERROR: Invalid logging target 'SysLog'\n");
  EXPECT_EQ(first_->target(), LoggerConfig::TargetStdout);
}

TEST_F(Configure, TakesTheLoggersInTheOrderOfTheirCreation) {
  configure("c.d=second;a.b=first", nullptr);
  EXPECT_EQ(out_.text(),
            "ERROR: Invalid logging level 'first'\n"
            "ERROR: Invalid logging level 'second'\n");
}

TEST_F(Configure, SetsTheLevelBeforeTheTarget) {
  configure("a.b=loud", "stderr");
  EXPECT_EQ(out_.text(), "ERROR: Invalid logging level 'loud'\n");
  EXPECT_EQ(err_.text(), "");
}

TEST_F(Configure, GoesFromTheConfigurationsLevelToTheEnvironmentsTarget) {
  ConfigParser config(-1);
  ASSERT_TRUE(loadText(config, "[Logging]\na.b=loud\nLogTarget=syslog\n"));
  configure("a.b=louder", "kernel", &config);
  EXPECT_EQ(out_.text(),
            "ERROR: Invalid logging level 'loud' from config\n"
            "ERROR: Invalid logging target 'syslog' from config\n"
            "ERROR: Invalid logging level 'louder'\n"
            "ERROR: Invalid logging target 'kernel'\n"
            "ERROR: Invalid logging target 'syslog' from config\n"
            "ERROR: Invalid logging target 'kernel'\n");
}

}  // namespace
}  // namespace Cradle::Parser::Logging
