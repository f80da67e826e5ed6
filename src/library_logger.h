// SPDX-License-Identifier: MIT
// The logger through which the configuration library and everything built on it reports.
//
// Made during static initialisation with the identity below, the level LogWarning and the journal
// as its target; a program that wants it elsewhere says so first thing.
#pragma once

#include "export.h"
#include "logging/logger_config.h"

namespace Cradle::Parser {

inline constexpr const char* kLibraryLoggerIdent = "com.corvid.cradle.lib.ConfigParser";

CRADLE_CONFIG_API Logging::LoggerConfig& libraryLogger();

}  // namespace Cradle::Parser
