// SPDX-License-Identifier: MIT
// Which files of a directory are configuration.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace Cradle::Parser {

inline constexpr std::string_view kConfigFilePattern = "*.conf";

// The paths in `directory` that match the pattern, in the byte order in which they are loaded.
std::vector<std::string> configFiles(const std::string& directory);

}  // namespace Cradle::Parser
