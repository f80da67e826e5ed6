// SPDX-License-Identifier: MIT
// The commands of the inspecting program, one row each.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

#include "inspect/options.h"

namespace Cradle::Inspect {

inline constexpr int kFine = 0;
inline constexpr int kFindings = 1;  // also: differences, nothing there
inline constexpr int kTrouble = 2;   // a wrong command line, or the command cannot do its work

// What a command has to say.
struct Answer {
  std::string text;  // for standard output
  int status = kFine;
  std::string errors = {};  // for standard error
};

struct Command {
  std::string_view name;
  std::string_view operands;  // as the help shows them
  std::size_t fewest;         // operands
  std::size_t most;
  std::string_view help;
  Answer (*run)(const Options& options, std::span<const std::string> operands);
};

// Every command, in the order of the help.
std::span<const Command> commands();

}  // namespace Cradle::Inspect
