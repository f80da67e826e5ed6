// SPDX-License-Identifier: MIT
// The command line: options, each with exactly one value, then one output file.
//
// Options are recognised only before the output file; a value is always the next argument, whatever
// it looks like. Messages are for standard error and the usage text for standard output, never for
// the logger.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "main/options.h"

namespace Cradle::CommandLine {

// What a command line that is wrong has to say.
struct Complaint {
  std::string errors;
  std::string usage;  // empty where the message needs none
};

// Reads the arguments, the program's name first, into `settings` and fills in the defaults. False
// when the command line is wrong, with the complaint.
bool parse(std::span<const char* const> arguments, Settings& settings, Complaint& complaint);

// Fills in what has not been said.
void applyDefaults(Settings& settings);

std::string usage(std::string_view program);

}  // namespace Cradle::CommandLine
