// SPDX-License-Identifier: MIT
// What any generator does with the static fragments and mount hooks of a configuration directory.
//
// Files and scripts are taken in ascending byte order of their paths. Neither function stops at a
// bad one: what cannot be read is passed over silently, and a failing script counts with the lines
// that it did print.
#pragma once

#include <span>
#include <string>

#include "config_writer.h"
#include "export.h"

namespace Cradle::Parser::GeneratorHelpers {

// Copies every file that matches `pattern` in whole, framed by an empty line and a comment before
// it and a comment behind it.
CRADLE_CONFIG_API void parseDefaults(ConfigWriter& writer, const std::string& pattern);

// Runs every script that matches `pattern` and writes each valid mount entry that it prints under
// `key`. Every other line is warned about and dropped.
CRADLE_CONFIG_API void runMountHooks(ConfigWriter& writer, const std::string& pattern,
                                     const std::string& key,
                                     std::span<const std::string> arguments);

}  // namespace Cradle::Parser::GeneratorHelpers
