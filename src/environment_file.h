// SPDX-License-Identifier: MIT
// Environment files: text files of "name=value" lines such as the system's locale file.
//
// Name and value are trimmed; a value between double quotes loses them; nothing else is unquoted.
// A line without "=" is ignored, and there is no comment syntax. Of several lines for one name the
// last one counts.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "export.h"

namespace Cradle::Parser {

// The value of `name` in the file at `path`, or nothing. With `report`, a file that cannot be read
// to its end gives nothing and is logged as an error, as is a missing variable; without it the
// reader is silent and gives what stood before the failure.
CRADLE_CONFIG_API std::optional<std::string> readEnvironmentFile(const std::string& path,
                                                                 std::string_view name,
                                                                 bool report);

}  // namespace Cradle::Parser
