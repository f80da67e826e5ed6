// SPDX-License-Identifier: MIT
#include "common/value_sources.h"

#include <cstdint>
#include <span>
#include <string_view>

#include "android_property.h"
#include "base/environment.h"
#include "common/check.h"
#include "dconf_value.h"
#include "environment_file.h"
#include "real_path.h"
#include "run_command.h"

namespace Cradle::Fuzz {

std::optional<std::string> sourceValue(const std::string& format, const std::string& argument) {
  if (argument.empty() || argument[0] == '-') {
    return std::nullopt;
  }
  return "$${USER}" + format + " of " + argument + ";";
}

}  // namespace Cradle::Fuzz

namespace Cradle {

using Fuzz::require;
using Fuzz::sourceValue;

std::string getEnvironment(const std::string& name, const std::string& fallback) {
  return sourceValue("env", name).value_or(fallback);
}

namespace Parser {

std::string resolvePath(const std::string& path) {
  return sourceValue("realpath", path).value_or("");
}

std::string readDconf(const std::string& key, std::int32_t uid) {
  require(uid == Fuzz::kDconfUser, "the dconf database of the template's user is read");
  return sourceValue("dconf", key).value_or("");
}

std::string readProperty(const std::string& name) {
  return sourceValue("prop", name).value_or("");
}

// The evaluator trims the output, and takes it only when the status is 0.
std::string runCommand(const std::string& command, std::span<const std::string> arguments,
                       std::int32_t* status) {
  require(arguments.empty(), "the command of a template has no arguments");
  const std::optional<std::string> value = sourceValue("system", command);
  *status = value ? 0 : 1;
  return value ? " \t" + *value + "\n\n" : "output of a command that failed";
}

std::optional<std::string> readEnvironmentFile(const std::string& path, std::string_view name,
                                               bool report) {
  require(!report, "a template's environment file is read silently");
  return sourceValue("envfile", path + ":" + std::string(name));
}

}  // namespace Parser
}  // namespace Cradle
