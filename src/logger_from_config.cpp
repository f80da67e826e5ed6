// SPDX-License-Identifier: MIT
// What reads a configuration for the loggers: LoggerConfig::configure() and two setters. They stand
// here, above the logging module, which knows ConfigParser only by name.

#include <cassert>
#include <shared_mutex>
#include <string>

#include "base/environment.h"
#include "config_parser.h"
#include "logging/log_level.h"
#include "logging/logger_config.h"
#include "logging/logger_registry.h"

namespace Cradle::Parser::Logging {
namespace {

constexpr std::string_view kLoggingGroup = "Logging";
constexpr std::string_view kTargetKey = "LogTarget";

}  // namespace

void LoggerConfig::configure(const ConfigParser* config) {
  const std::string levels = getEnvironment("CRADLE_LOGGING", "");
  const std::string target = getEnvironment("CRADLE_LOGGING_TARGET", "");
  LoggerRegistry& registry = loggerRegistry();
  const std::shared_lock lock(registry.mutex);
  for (const std::shared_ptr<LoggerConfig>& logger : registry.loggers) {
    if (config != nullptr) {
      logger->setLevel(config);
      logger->setTarget(config);
    }
    logger->configureFromEnvironment(levels, target);
  }
}

bool LoggerConfig::setLevel(const ConfigParser* config) {
  assert(config);
  if (!config->hasValue(kLoggingGroup, ident())) {
    return true;
  }
  std::string value;
  config->getValue(kLoggingGroup, ident(), value);
  if (const int named = convertLevelFromString(value); named >= 0) {
    return setLevel(convertLevelFromInt(named));
  }
  int number = 0;
  bool isNumber = false;
  config->getValue(kLoggingGroup, ident(), number, &isNumber);
  if (isNumber && static_cast<unsigned>(number) < kLevels.size()) {
    return setLevel(convertLevelFromInt(number));
  }
  error() << "Invalid logging level '" << value << "' from config";
  return false;
}

bool LoggerConfig::setTarget(const ConfigParser* config) {
  assert(config);
  std::string value;
  // Always asked through hasKey(), which warns where the key has not been declared, absent or not.
  if (config->hasKey(kLoggingGroup, kTargetKey)) {
    config->getValue(kLoggingGroup, kTargetKey, value);
  }
  return value.empty() || storeTarget(value, " from config");
}

}  // namespace Cradle::Parser::Logging
