// SPDX-License-Identifier: MIT
// Loggers: a dotted identity, a threshold level and a target, held by shared ownership.
//
// Every logger lives in one process-wide registry until exit, so that configure() reaches all of
// them. Setters never throw: they return false, leave the settings as they were and say why through
// the logger itself. An invalid identity, a level out of range or a null parser is a programming
// error and aborts. All operations may be called from several threads.
#pragma once

#include <memory>
#include <string>

#include "../export.h"
#include "level.h"
#include "log_message.h"
#include "target.h"

namespace Cradle::Parser {
class ConfigParser;
}

namespace Cradle::Parser::Logging {

class CRADLE_CONFIG_API LoggerConfig {
 public:
  // A logger emits a message whose level is not greater than its own.
  using Level = Logging::Level;
  using enum Logging::Level;

  using Target = Logging::Target;
  using enum Logging::Target;

  // A NUL-terminated dotted name.
  using Ident = const char*;

  // The logger of that identity. A new one has the given level and the journal as its target; an
  // existing one warns "Reusing logger for identity: ..." and takes the level.
  static std::shared_ptr<LoggerConfig> create(Ident ident, Level level);

  // Whether `ident` consists of letters, digits, "-", "_" and at least one ".".
  static bool identIsValid(Ident ident);

  // The registered logger of exactly that identity, or an empty pointer.
  static std::shared_ptr<LoggerConfig> find(Ident ident);

  // Applies the group "Logging" of `config` (nothing when null) to every registered logger, and
  // then the environment, which overrides it: CRADLE_LOGGING is "IDENTITY=LEVEL" items separated by
  // ";", CRADLE_LOGGING_TARGET one target for all. Each logger opens a file target on its own.
  static void configure(const ConfigParser* config);

  ~LoggerConfig();
  LoggerConfig(const LoggerConfig&) = delete;
  LoggerConfig& operator=(const LoggerConfig&) = delete;

  // A level; its name in any case or its number; or the configuration's value for this identity
  // (true when there is none). `config` must not be null.
  bool setLevel(Level level);
  bool setLevel(const std::string& value);
  bool setLevel(const ConfigParser* config);

  // A target other than TargetFile; "systemd", "stdout", "stderr" or an absolute path, in any case;
  // or the configuration's "LogTarget" (true when absent or empty). A path is lower-cased like the
  // rest, and its file created or truncated. `config` must not be null.
  bool setTarget(Target target);
  bool setTarget(const std::string& value);
  bool setTarget(const ConfigParser* config);

  Target target() const;
  Ident ident() const;
  bool isEnabled(Level level) const;

  LogMessage critical() const { return {this, LogCritical}; }
  LogMessage error() const { return {this, LogError}; }
  LogMessage warning() const { return {this, LogWarning}; }
  LogMessage info() const { return {this, LogInfo}; }
  LogMessage debug() const { return {this, LogDebug}; }

 private:
  friend class LogMessage;
  struct State;

  CRADLE_CONFIG_LOCAL LoggerConfig(Ident ident, Level level);

  // Where a message of `level` goes now.
  CRADLE_CONFIG_LOCAL LogTarget targetFor(Level level) const;

  // Stores the target that `value` names, or logs it as invalid with `origin` behind the value.
  CRADLE_CONFIG_LOCAL bool storeTarget(const std::string& value, const char* origin);

  CRADLE_CONFIG_LOCAL void configureFromEnvironment(const std::string& levels,
                                                    const std::string& target);

  std::unique_ptr<State> state_;
};

}  // namespace Cradle::Parser::Logging
