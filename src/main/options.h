// SPDX-License-Identifier: MIT
// The options of the command line and the settings that they change.
//
// Every option takes exactly one value and is one row of the table, from which parsing, messages
// and the usage text all come.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace Cradle::CommandLine {

inline constexpr std::string_view kDefaultDirectory = "/etc/cradle.conf.d";

enum class OutputType : std::uint8_t { Config = 0, Property = 1, Lxc = 2 };

struct Settings {
  OutputType type = OutputType::Config;
  std::vector<std::string> directories;
  std::string instance = "default";
  std::uint32_t userId = static_cast<std::uint32_t>(-1);  // all ones: detect
  std::uint32_t baseUid = static_cast<std::uint32_t>(-1);
  std::string logLevel;  // empty: as it is
  std::string output;
};

struct Option {
  std::string_view name;
  std::string_view placeholder;
  std::string_view help;
  std::string_view helpDefault;   // follows the help directly
  std::string_view missingValue;  // the message when the value is missing
  // Stores the value. Otherwise appends its message, a line, and returns false; the usage text
  // follows.
  bool (*apply)(Settings& settings, const std::string& value, std::string& errors);
};

// Every option, in the order of the usage text.
std::span<const Option> options();

}  // namespace Cradle::CommandLine
