// SPDX-License-Identifier: MIT
#include "logging/logger_config.h"

#include <algorithm>
#include <cassert>
#include <mutex>
#include <shared_mutex>
#include <string_view>
#include <utility>

#include "base/character_set.h"
#include "base/conversion.h"
#include "logging/log_level.h"
#include "logging/log_target.h"
#include "logging/logger_registry.h"

namespace Cradle::Parser::Logging {
namespace {

constexpr CharacterSet kIdentCharacters(
    "-.0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ_abcdefghijklmnopqrstuvwxyz");
constexpr char kRequiredIdentCharacter = '.';

}  // namespace

struct LoggerConfig::State {
  std::string identity;
  Level level;
  LogTarget target;
  mutable std::shared_mutex mutex;  // guards level and target; taken after the registry's
};

LoggerConfig::LoggerConfig(Ident ident, Level level) : state_(std::make_unique<State>()) {
  state_->identity = ident;
  state_->level = level;
  state_->target = makeTarget(TargetSystemd);
}

LoggerConfig::~LoggerConfig() = default;

std::shared_ptr<LoggerConfig> LoggerConfig::create(Ident ident, Level level) {
  assert(identIsValid(ident));
  if (auto existing = find(ident)) {
    existing->warning() << "Reusing logger for identity: " << ident;
    existing->setLevel(level);
    return existing;
  }
  LoggerRegistry& registry = loggerRegistry();
  const std::unique_lock lock(registry.mutex);
  registry.loggers.push_back(std::shared_ptr<LoggerConfig>(new LoggerConfig(ident, level)));
  return registry.loggers.back();
}

bool LoggerConfig::identIsValid(Ident ident) {
  const std::string_view name(ident);
  return kIdentCharacters.containsAll(name) && name.find(kRequiredIdentCharacter) != name.npos;
}

std::shared_ptr<LoggerConfig> LoggerConfig::find(Ident ident) {
  LoggerRegistry& registry = loggerRegistry();
  const std::shared_lock lock(registry.mutex);
  const auto found =
      std::find_if(registry.loggers.begin(), registry.loggers.end(),
                   [&](const auto& logger) { return logger->ident() == std::string_view(ident); });
  return found == registry.loggers.end() ? nullptr : *found;
}

bool LoggerConfig::setLevel(Level level) {
  const std::unique_lock lock(state_->mutex);
  state_->level = level;
  return true;
}

bool LoggerConfig::setLevel(const std::string& value) {
  if (const int named = convertLevelFromString(value); named >= 0) {
    return setLevel(convertLevelFromInt(named));
  }
  bool isNumber = false;
  const int number = convertInt(value, &isNumber);
  if (isNumber && static_cast<unsigned>(number) < kLevels.size()) {
    return setLevel(convertLevelFromInt(number));
  }
  error() << "Invalid logging level '" << value << '\'';
  return false;
}

bool LoggerConfig::setTarget(Target target) {
  if (target == TargetFile) {
    error() << "Cannot set file logging target with LoggerConfig::setTarget(Target)";
    return false;
  }
  const std::unique_lock lock(state_->mutex);
  state_->target = makeTarget(target);
  return true;
}

bool LoggerConfig::setTarget(const std::string& value) {
  return storeTarget(value, "");
}

bool LoggerConfig::storeTarget(const std::string& value, const char* origin) {
  LogTarget target = convertTargetFromString(value);
  if (!targetIsValid(target)) {
    error() << "Invalid logging target '" << value << '\'' << origin;
    return false;
  }
  const std::unique_lock lock(state_->mutex);
  state_->target = std::move(target);
  return true;
}

LoggerConfig::Target LoggerConfig::target() const {
  const std::shared_lock lock(state_->mutex);
  return state_->target.target;
}

LoggerConfig::Ident LoggerConfig::ident() const {
  return state_->identity.c_str();
}

bool LoggerConfig::isEnabled(Level level) const {
  const std::shared_lock lock(state_->mutex);
  return level <= state_->level;
}

LogTarget LoggerConfig::targetFor(Level level) const {
  const std::shared_lock lock(state_->mutex);
  return level <= state_->level ? state_->target : LogTarget{};
}

}  // namespace Cradle::Parser::Logging
