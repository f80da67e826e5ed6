// SPDX-License-Identifier: MIT
#include "inspect/command.h"

#include <array>

#include "inspect/command_functions.h"

namespace Cradle::Inspect {
namespace {

constexpr std::array<Command, 8> kCommands{{
    {"files", "", 0, 0, "what a run reads, runs and copies, in its order, and what it passes over",
     runFiles},
    {"show", "[GROUP[/KEY]]", 0, 1, "the merged configuration, each value with its file and line",
     runShow},
    {"explain", "GROUP/KEY", 1, 1, "all that happened to a key, and what becomes of it",
     runExplain},
    {"check", "", 0, 0, "what is wrong or doubtful, and what to do about it", runCheck},
    {"diff", "OUTPUT", 1, 1, "what a run would change in an output file of the type", runDiff},
    {"graph", "", 0, 0, "the references between keys, for Graphviz", runGraph},
    {"keys", "[GROUP[/KEY]]", 0, 1, "the keys that the programs know", runKeys},
    {"findings", "", 0, 0, "the kinds of findings that check may report", runFindings},
}};

}  // namespace

std::span<const Command> commands() {
  return kCommands;
}

}  // namespace Cradle::Inspect
