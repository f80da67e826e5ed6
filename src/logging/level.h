// SPDX-License-Identifier: MIT
// The five levels of a log message.
#pragma once

#include <cstdint>

namespace Cradle::Parser::Logging {

// A smaller value is more severe. Used as LoggerConfig::Level.
enum class Level : std::int32_t { LogCritical, LogError, LogWarning, LogInfo, LogDebug };

}  // namespace Cradle::Parser::Logging
