// SPDX-License-Identifier: MIT
// How log targets are made, named and asked, and how lines are sent to them.
#pragma once

#include <string>
#include <string_view>

#include "base/output_file.h"
#include "logging/level.h"
#include "logging/target.h"

namespace Cradle::Parser::Logging {

// The target with its standard file, if it has one.
LogTarget makeTarget(Target target);

// The target that a text names: "systemd", "stdout", "stderr" or an absolute path, in any case. A
// path is lower-cased like the rest, and its file created or truncated. A file that cannot be
// opened and any other text give TargetFile without a file.
LogTarget convertTargetFromString(std::string value);

// Whether nothing sent there goes anywhere: a target that has neither the journal nor a file.
bool targetDropsAll(const LogTarget& target);

// Whether lines sent there can arrive: the journal always; otherwise a good file.
bool targetIsValid(const LogTarget& target);

// Sends one message: to the journal the text alone with the level's priority (sd_journal_print), to
// a file one line of the level's name, ": " and the text.
void emitLine(const LogTarget& target, Level level, std::string_view text);

}  // namespace Cradle::Parser::Logging
