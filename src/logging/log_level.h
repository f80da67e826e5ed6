// SPDX-License-Identifier: MIT
// What the levels of a log message are called, and their journal priorities.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "logging/level.h"

namespace Cradle::Parser::Logging {

struct LevelRow {
  Level level;
  std::string_view inputName;    // accepted in any case
  std::string_view printedName;  // begins a line in a file
  int journalPriority;           // as in <syslog.h>
};

// One row per level, in the order of their values.
inline constexpr std::array<LevelRow, 5> kLevels{{
    // clang-format off
    {Level::LogCritical, "critical", "CRITICAL", 2},
    {Level::LogError,    "error",    "ERROR",    3},
    {Level::LogWarning,  "warning",  "WARNING",  4},
    {Level::LogInfo,     "info",     "INFO",     6},
    {Level::LogDebug,    "debug",    "DEBUG",    7},
    // clang-format on
}};

// The row of a level.
const LevelRow& levelRow(Level level);

// The number of the level with that name in any case, or -1.
int convertLevelFromString(std::string value);

// The level of that number, which must be one.
Level convertLevelFromInt(int level);

}  // namespace Cradle::Parser::Logging
