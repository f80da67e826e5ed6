// Catches what the library logger writes while it lives, as lines of text.
#pragma once

#include <iostream>
#include <sstream>
#include <string>

#include "library_logger.h"

namespace Cradle::Testing {

class LogCapture {
 public:
  using Level = Parser::Logging::LoggerConfig::Level;

  explicit LogCapture(Level level = Level::LogWarning) : previous_(std::cerr.rdbuf(text_.rdbuf())) {
    Parser::libraryLogger().setTarget(Parser::Logging::LoggerConfig::TargetStderr);
    Parser::libraryLogger().setLevel(level);
  }
  ~LogCapture() {
    std::cerr.rdbuf(previous_);
    Parser::libraryLogger().setLevel(Level::LogWarning);
  }
  LogCapture(const LogCapture&) = delete;
  LogCapture& operator=(const LogCapture&) = delete;

  // Everything so far, each line as "LEVEL: text\n".
  std::string text() const { return text_.str(); }

 private:
  std::ostringstream text_;
  std::streambuf* previous_;
};

}  // namespace Cradle::Testing
