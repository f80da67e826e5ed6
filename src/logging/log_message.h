// SPDX-License-Identifier: MIT
// One log message, built from parts and emitted as one line when it is destroyed.
//
// Written as `logger.error() << "Cannot read " << path;`. The level and target are those that the
// logger has when the message is made. A message below the logger's threshold, and one without
// parts, emits nothing. Emitting leaves errno as it was.
#pragma once

#include <concepts>
#include <string>
#include <string_view>
#include <vector>

#include "../export.h"
#include "level.h"
#include "target.h"

namespace Cradle::Parser::Logging {

class LoggerConfig;

class CRADLE_CONFIG_API LogMessage {
 public:
  // A null logger makes a message that is dropped.
  LogMessage(const LoggerConfig* logger, Level level);
  ~LogMessage();
  LogMessage(const LogMessage&) = delete;
  LogMessage& operator=(const LogMessage&) = delete;

  Level level() const { return level_; }

  // Append one part. A null C string appends "(null)"; numbers are decimal.
  LogMessage& operator<<(const char* part);
  LogMessage& operator<<(std::string_view part);
  LogMessage& operator<<(char part);
  template <std::integral Number>
  LogMessage& operator<<(Number part) {
    return *this << std::string_view(std::to_string(part));
  }

 private:
  Level level_;
  std::vector<std::string> parts_;
  LogTarget target_;
};

}  // namespace Cradle::Parser::Logging
