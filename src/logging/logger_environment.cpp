// LoggerConfig::configure(): what the configuration and the environment say about the loggers.

#include <shared_mutex>
#include <string>

#include "base/environment.h"
#include "base/text.h"
#include "logging/logger_config.h"
#include "logging/logger_registry.h"

namespace Cradle::Parser::Logging {
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
