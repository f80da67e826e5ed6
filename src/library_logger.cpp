// SPDX-License-Identifier: MIT
#include "library_logger.h"

namespace Cradle::Parser {
namespace {

const std::shared_ptr<Logging::LoggerConfig> kLogger =
    Logging::LoggerConfig::create(kLibraryLoggerIdent, Logging::LoggerConfig::LogWarning);

}  // namespace

Logging::LoggerConfig& libraryLogger() {
  return *kLogger;
}

}  // namespace Cradle::Parser
