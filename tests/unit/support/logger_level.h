// SPDX-License-Identifier: MIT
// The level of a logger, which tells only what it is enabled for.
#pragma once

#include <string_view>

#include "logging/log_level.h"
#include "logging/logger_config.h"

namespace Cradle::Testing {

// The name of the least severe level that `logger` emits.
inline std::string_view levelOf(const Parser::Logging::LoggerConfig& logger) {
  std::string_view name = "none";
  for (const Parser::Logging::LevelRow& row : Parser::Logging::kLevels) {
    if (logger.isEnabled(row.level)) {
      name = row.inputName;
    }
  }
  return name;
}

}  // namespace Cradle::Testing
