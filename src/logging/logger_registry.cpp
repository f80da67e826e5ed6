// SPDX-License-Identifier: MIT
#include "logging/logger_registry.h"

namespace Cradle::Parser::Logging {

LoggerRegistry& loggerRegistry() {
  static LoggerRegistry registry;
  return registry;
}

}  // namespace Cradle::Parser::Logging
