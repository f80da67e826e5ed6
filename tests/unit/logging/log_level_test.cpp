// SPDX-License-Identifier: MIT
#include "logging/log_level.h"

#include <string>
#include <type_traits>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <syslog.h>

#include "logging/logger_config.h"

namespace Cradle::Parser::Logging {
namespace {

using ::testing::HasSubstr;

struct LevelFacts {
  Level level;
  int number;
  const char* inputName;
  const char* printedName;
  int journalPriority;
};

constexpr LevelFacts kFacts[] = {
    {LoggerConfig::LogCritical, 0, "critical", "CRITICAL", LOG_CRIT},
    {LoggerConfig::LogError, 1, "error", "ERROR", LOG_ERR},
    {LoggerConfig::LogWarning, 2, "warning", "WARNING", LOG_WARNING},
    {LoggerConfig::LogInfo, 3, "info", "INFO", LOG_INFO},
    {LoggerConfig::LogDebug, 4, "debug", "DEBUG", LOG_DEBUG},
};

static_assert(kLevels.size() == std::size(kFacts));
static_assert(std::is_same_v<std::underlying_type_t<Level>, std::int32_t>);

TEST(LogLevel, HasANumberTwoNamesAndAJournalPriority) {
  for (const LevelFacts& facts : kFacts) {
    EXPECT_EQ(static_cast<int>(facts.level), facts.number);
    const LevelRow& row = levelRow(facts.level);
    EXPECT_EQ(row.level, facts.level) << facts.inputName;
    EXPECT_EQ(row.inputName, facts.inputName);
    EXPECT_EQ(row.printedName, facts.printedName);
    EXPECT_EQ(row.journalPriority, facts.journalPriority) << facts.inputName;
  }
}

TEST(LogLevel, HasItsRowAtItsNumber) {
  for (const LevelFacts& facts : kFacts) {
    EXPECT_EQ(&levelRow(facts.level), &kLevels[static_cast<std::size_t>(facts.number)]);
  }
}

struct NamedLevel {
  const char* name;
  int number;
};

constexpr NamedLevel kNamedLevels[] = {
    {"critical", 0}, {"CRITICAL", 0}, {"error", 1}, {"Error", 1}, {"warning", 2}, {"wArNiNg", 2},
    {"info", 3},     {"INFO", 3},     {"debug", 4}, {"Debug", 4}, {"DEBUG", 4},
};

TEST(LogLevel, IsKnownByItsNameInAnyCase) {
  for (const NamedLevel& row : kNamedLevels) {
    EXPECT_EQ(convertLevelFromString(row.name), row.number) << row.name;
  }
}

TEST(LogLevel, IsMadeOfItsNumber) {
  for (const LevelFacts& facts : kFacts) {
    EXPECT_EQ(convertLevelFromInt(facts.number), facts.level);
  }
}

// Failures

TEST(LogLevel, IsNotKnownByAnyOtherText) {
  for (const char* const name :
       {"", "0", "4", "warn", "errors", " error", "error ", "LogError", "crit", "loud"}) {
    EXPECT_EQ(convertLevelFromString(name), -1) << name;
  }
}

TEST(LogLevelDeathTest, CannotBeMadeOfANumberOutOfRange) {
  for (const int number : {-1, 5}) {
    EXPECT_DEATH(convertLevelFromInt(number),
                 HasSubstr("static_cast<int>(LoggerConfig::LogCritical) <= level && level <= "
                           "static_cast<int>(LoggerConfig::LogDebug)"))
        << number;
  }
}

}  // namespace
}  // namespace Cradle::Parser::Logging
