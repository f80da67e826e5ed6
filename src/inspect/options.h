// SPDX-License-Identifier: MIT
// The command line of the inspecting program: options, a command, and what it is about.
//
// Options may stand anywhere. Those that say what a run is are the first program's own and mean the
// same. Every option is one row of a table, from which parsing and the help both come.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "main/options.h"

namespace Cradle::Inspect {

enum class OutputFormat : std::uint8_t { Text, Json, Svg };
enum class ColourMode : std::uint8_t { Automatic, Always, Never };

struct Options {
  CommandLine::Settings run;
  OutputFormat format = OutputFormat::Text;
  ColourMode colour = ColourMode::Automatic;
  bool execute = false;
  bool all = false;
  bool strict = false;
  bool help = false;
  bool version = false;
  std::vector<std::string> words;  // the command and its operands
};

struct OptionRow {
  const char* name;
  char letter;                   // NUL for none
  std::string_view placeholder;  // empty for an option without a value
  std::string_view help;
  // Stores the value, or appends a message to `errors` and returns false. Null for an option of the
  // first program.
  bool (*apply)(Options& options, const std::string& value, std::string& errors);
};

// Every option, in the order of the help.
std::span<const OptionRow> optionRows();

// Reads the arguments, the program's name first, which getopt_long may reorder. Nothing when one is
// wrong, with the reason in `errors`.
std::optional<Options> parseOptions(std::span<char*> arguments, std::string& errors);

// Whether text for people is to be coloured: by the option, or where standard output is a terminal
// that is not dumb and NO_COLOR is not set.
bool wantsColour(ColourMode mode);

}  // namespace Cradle::Inspect
