// SPDX-License-Identifier: MIT
#include "logging/log_level.h"

#include <cassert>

#include "base/table.h"
#include "base/text.h"
#include "logging/logger_config.h"

namespace Cradle::Parser::Logging {

const LevelRow& levelRow(Level level) {
  return kLevels.at(static_cast<std::size_t>(level));
}

int convertLevelFromString(std::string value) {
  toLowerCase(value);
  const LevelRow* const row = findRow(kLevels, &LevelRow::inputName, value);
  return row == nullptr ? -1 : static_cast<int>(row->level);
}

Level convertLevelFromInt(int level) {
  assert(static_cast<int>(LoggerConfig::LogCritical) <= level &&
         level <= static_cast<int>(LoggerConfig::LogDebug));
  return static_cast<Level>(level);
}

}  // namespace Cradle::Parser::Logging
