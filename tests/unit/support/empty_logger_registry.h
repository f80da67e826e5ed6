// SPDX-License-Identifier: MIT
// Gives a test a registry without loggers; the process's own come back when the test ends.
#pragma once

#include "logging/logger_config.h"
#include "logging/logger_registry.h"

namespace Cradle::Testing {

class EmptyLoggerRegistry {
 public:
  EmptyLoggerRegistry() { loggers_.swap(Parser::Logging::loggerRegistry().loggers); }
  ~EmptyLoggerRegistry() { loggers_.swap(Parser::Logging::loggerRegistry().loggers); }
  EmptyLoggerRegistry(const EmptyLoggerRegistry&) = delete;
  EmptyLoggerRegistry& operator=(const EmptyLoggerRegistry&) = delete;

 private:
  decltype(Parser::Logging::LoggerRegistry::loggers) loggers_;
};

}  // namespace Cradle::Testing
