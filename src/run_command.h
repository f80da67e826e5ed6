// SPDX-License-Identifier: MIT
// Runs shell commands: "system" templates and hook scripts.
#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace Cradle::Parser {

// Runs `command` by the shell (popen), each argument appended in single quotes, and returns all
// that it wrote to its standard output, in pieces of at most 1023 bytes of which each ends at its
// first NUL. Quotes inside an argument are not escaped. `status`, unless null, receives the raw
// wait status, or -1 when the command could not be started. Failures to start or close and exit
// codes other than 0 are logged with the command, without its arguments; death by a signal is not.
// A command that is refused (see side_effects.h) counts as one that could not be started.
std::string runCommand(const std::string& command, std::span<const std::string> arguments,
                       std::int32_t* status = nullptr);

}  // namespace Cradle::Parser
