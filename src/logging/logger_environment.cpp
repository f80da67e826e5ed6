// LoggerConfig::configure(): what the configuration and the environment say about the loggers.

#include <cstdlib>
#include <shared_mutex>
#include <string>

#include "base/text.h"
#include "logging/logger_config.h"
#include "logging/logger_registry.h"

namespace Cradle::Parser::Logging {
namespace {

std::string environmentVariable(const char* name) {
  const char* const value = std::getenv(name);
  return value == nullptr ? "" : value;
}

}  // namespace

void LoggerConfig::configure(const ConfigParser* config) {
  const std::string levels = environmentVariable("CRADLE_LOGGING");
  const std::string target = environmentVariable("CRADLE_LOGGING_TARGET");
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

void LoggerConfig::configureFromEnvironment(const std::string& levels, const std::string& target) {
  const std::string prefix = std::string(ident()) + "=";
  for (const std::string_view item : split(levels, ';', EmptyParts::DropAll)) {
    if (item.starts_with(prefix)) {
      if (item.size() > prefix.size()) {
        setLevel(std::string(item.substr(prefix.size())));
      }
      break;
    }
  }
  if (!target.empty()) {
    setTarget(target);
  }
}

}  // namespace Cradle::Parser::Logging
