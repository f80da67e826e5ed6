// SPDX-License-Identifier: MIT
// The process-wide list of all loggers, in the order of their creation.
//
// The registry shares the ownership of its loggers and never lets one go before exit. Whoever works
// with the list holds its mutex: for reading to search or walk it, for writing to append.
#pragma once

#include <memory>
#include <shared_mutex>
#include <vector>

namespace Cradle::Parser::Logging {

class LoggerConfig;

struct LoggerRegistry {
  std::shared_mutex mutex;
  std::vector<std::shared_ptr<LoggerConfig>> loggers;
};

// The one registry, made on first use and destroyed at exit.
LoggerRegistry& loggerRegistry();

}  // namespace Cradle::Parser::Logging
