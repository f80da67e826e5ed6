// SPDX-License-Identifier: MIT
// Catches what the library logger writes while it lives, as lines of text.
#pragma once

#include <string>

#include "library_logger.h"
#include "support/output_capture.h"

namespace Cradle::Testing {

class LogCapture {
 public:
  using Level = Parser::Logging::LoggerConfig::Level;

  explicit LogCapture(Level level = Level::LogWarning) {
    Parser::libraryLogger().setTarget(Parser::Logging::LoggerConfig::TargetStderr);
    Parser::libraryLogger().setLevel(level);
  }
  ~LogCapture() { Parser::libraryLogger().setLevel(Level::LogWarning); }
  LogCapture(const LogCapture&) = delete;
  LogCapture& operator=(const LogCapture&) = delete;

  // Everything so far, each line as "LEVEL: text\n".
  std::string text() const { return errors_.text(); }

 private:
  OutputCapture errors_{standardError()};
};

}  // namespace Cradle::Testing
