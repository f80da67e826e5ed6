// SPDX-License-Identifier: MIT
// What the environment says about a logger.

#include <string>

#include "base/text.h"
#include "logging/logger_config.h"

namespace Cradle::Parser::Logging {

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
