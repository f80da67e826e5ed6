// SPDX-License-Identifier: MIT
// What every command looks at: the run that would be made, its merged configuration, and where each
// value of it comes from.
//
// Made like a run of the first program, but nothing is written, no user is waited for, and a bad
// file ends nothing. Where no user can be told, the names that stand for the user ("${HOME}") are
// left as they are.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "generators/run.h"
#include "inspect/journal.h"
#include "main/options.h"

namespace Cradle::Inspect {

struct Inspection {
  CommandLine::Settings settings;
  std::unique_ptr<Generators::Run> run;  // its parser holds the merged configuration
  bool userIsKnown;
  Journal journal;
  bool execute = false;  // commands and hooks may be started

  const Parser::ConfigParser& parser() const { return run->parser; }
  const std::vector<std::string>& directories() const { return settings.directories; }

  // The text of a value with its references followed.
  std::string textOf(const Parser::ConfigValue& value) const;
};

// Reads what the settings name. Commands are started only with `execute`.
Inspection inspect(const CommandLine::Settings& settings, bool execute);

// Whether a template of that name tells of the user: "HOME", "USER" or "USER_ID".
bool isUserName(std::string_view name);

// The kind of run that writes an output.
const Generators::RunKind& runKind(CommandLine::OutputType type);

}  // namespace Cradle::Inspect
