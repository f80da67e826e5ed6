// SPDX-License-Identifier: MIT
#include "logging/log_message.h"

#include <cerrno>

#include "base/text.h"
#include "logging/log_target.h"
#include "logging/logger_config.h"

namespace Cradle::Parser::Logging {

LogMessage::LogMessage(const LoggerConfig* logger, Level level) : level_(level) {
  if (logger != nullptr) {
    target_ = logger->targetFor(level);
  }
}

LogMessage::~LogMessage() {
  if (parts_.empty()) {
    return;
  }
  const int callersError = errno;
  emitLine(target_, level_, join(parts_, ""));
  errno = callersError;
}

LogMessage& LogMessage::operator<<(const char* part) {
  return *this << std::string_view(part == nullptr ? "(null)" : part);
}

LogMessage& LogMessage::operator<<(std::string_view part) {
  if (!targetDropsAll(target_)) {
    parts_.emplace_back(part);
  }
  return *this;
}

LogMessage& LogMessage::operator<<(char part) {
  return *this << std::string_view(&part, 1);
}

}  // namespace Cradle::Parser::Logging
