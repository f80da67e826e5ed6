// The command line: options, each with exactly one value, then one output file.
//
// Options are recognised only before the output file; a value is always the next argument, whatever
// it looks like. Messages go to an error stream and the usage text to an output stream, never
// through the logger.
#pragma once

#include <ostream>
#include <span>
#include <string_view>

#include "main/options.h"

namespace Cradle::CommandLine {

struct Streams {
  std::ostream& output;
  std::ostream& errors;
};

// Reads the arguments, the program's name first, into `settings` and fills in the defaults. False
// when the command line is wrong: the message has then been written, and the usage text where it
// belongs.
bool parse(std::span<const char* const> arguments, Settings& settings, Streams streams);

void printUsage(std::string_view program, std::ostream& output);

}  // namespace Cradle::CommandLine
