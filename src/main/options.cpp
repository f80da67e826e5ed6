// SPDX-License-Identifier: MIT
#include "main/options.h"

#include <array>
#include <cerrno>
#include <cstdlib>
#include <limits>

#include "base/table.h"
#include "base/text.h"

namespace Cradle::CommandLine {
namespace {

constexpr std::string_view kTypeWords = R"(It must be one of "config", "property" and "lxc".)";

struct TypeWord {
  std::string_view word;
  OutputType type;
};

constexpr std::array<TypeWord, 3> kTypes{{
    {"config", OutputType::Config},
    {"property", OutputType::Property},
    {"lxc", OutputType::Lxc},
}};

bool applyType(Settings& settings, const std::string& value, std::string& errors) {
  const TypeWord* const type = findRow(kTypes, &TypeWord::word, value);
  if (type == nullptr) {
    errors.append("Invalid value for --type. ").append(kTypeWords).append("\n");
    return false;
  }
  settings.type = type->type;
  return true;
}

bool applyConfig(Settings& settings, const std::string& value, std::string& /*errors*/) {
  settings.directories.push_back(value);
  return true;
}

bool applyConfigs(Settings& settings, const std::string& value, std::string& /*errors*/) {
  for (const std::string_view directory : split(value, ':', EmptyParts::DropTrailing)) {
    settings.directories.emplace_back(directory);
  }
  return true;
}

bool applyInstance(Settings& settings, const std::string& value, std::string& /*errors*/) {
  settings.instance = value;
  return true;
}

bool applyLogLevel(Settings& settings, const std::string& value, std::string& /*errors*/) {
  settings.logLevel = value;
  return true;
}

// The leading integer of `value`, what follows it ignored, stored as 32 bits unsigned.
bool applyId(std::string_view option, std::uint32_t& id, const std::string& value,
             std::string& errors) {
  char* end = nullptr;
  errno = 0;
  const long number = std::strtol(value.c_str(), &end, 10);
  if (end == value.c_str()) {
    errors.append(option).append(": " + value + " does not look like an integer.\n");
    return false;
  }
  if (errno == ERANGE || number < std::numeric_limits<std::int32_t>::min() ||
      number > std::numeric_limits<std::int32_t>::max()) {
    errors.append(option).append(": " + value + " is too big/small.\n");
    return false;
  }
  id = static_cast<std::uint32_t>(number);
  return true;
}

bool applyUserId(Settings& settings, const std::string& value, std::string& errors) {
  return applyId("--user-id", settings.userId, value, errors);
}

bool applyBaseUid(Settings& settings, const std::string& value, std::string& errors) {
  return applyId("--base-uid", settings.baseUid, value, errors);
}

constexpr std::array<Option, 7> kOptions{{
    {.name = "--type",
     .placeholder = "config|lxc|property",
     .help = "Generate a config, lxc or property file. Defaults to config file.",
     .helpDefault = "",
     .missingValue = R"(--type needs value. It must be one of "config", "property" and "lxc".)",
     .apply = applyType},
    {.name = "--config",
     .placeholder = "<input_directory>",
     .help = "Directory to read. Defaults to ",
     .helpDefault = kDefaultDirectory,
     .missingValue = "--config needs value. Specify alternative config directory to read.",
     .apply = applyConfig},
    {.name = "--configs",
     .placeholder = "<directories>",
     .help = "Directories to read, separated by ':'.",
     .helpDefault = "",
     .missingValue = "--configs needs value.",
     .apply = applyConfigs},
    {.name = "--user-id",
     .placeholder = "<UID>",
     .help = "UID for user. Defaults to seat0 active user.",
     .helpDefault = "",
     .missingValue = "--user-id needs value. Specify an UID value.",
     .apply = applyUserId},
    {.name = "--instance",
     .placeholder = "<name>",
     .help = "Instance name for the container.",
     .helpDefault = "",
     .missingValue = "--instance needs value. Specify a name.",
     .apply = applyInstance},
    {.name = "--base-uid",
     .placeholder = "<UID>",
     .help = "UID as which cradle runs. Defaults to 0.",
     .helpDefault = "",
     .missingValue = "--base-uid needs value. Specify an UID value.",
     .apply = applyBaseUid},
    {.name = "--log-level",
     .placeholder = "<level>",
     .help = "Log level. Defaults to warning.",
     .helpDefault = "",
     .missingValue = "--log-level needs value.",
     .apply = applyLogLevel},
}};

}  // namespace

std::span<const Option> options() {
  return kOptions;
}

}  // namespace Cradle::CommandLine
