// Where log lines go: the systemd journal, standard output, standard error or a file.
//
// A target shares its file, so a message under construction keeps the file that it captured open
// even when the logger moves on. Lines to a file that is missing or has failed before are dropped,
// and so are lines to the journal on a host without the systemd client library.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "base/output_file.h"
#include "logging/log_level.h"

namespace Cradle::Parser::Logging {

// Used as LoggerConfig::Target.
enum class Target : std::int32_t { TargetSystemd, TargetStdout, TargetStderr, TargetFile };

struct LogTarget {
  Target target = Target::TargetFile;
  std::shared_ptr<OutputFile> file;  // null for the journal and for a target that drops all
};

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
