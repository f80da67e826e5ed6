// SPDX-License-Identifier: MIT
// Where log lines go: the systemd journal, standard output, standard error or a file.
//
// A target shares its file, so a message under construction keeps the file that it captured open
// even when the logger moves on. Lines to a file that is missing or has failed before are dropped,
// and so are lines to the journal on a host without the systemd client library.
#pragma once

#include <cstdint>
#include <memory>

namespace Cradle {
class OutputFile;
}

namespace Cradle::Parser::Logging {

// Used as LoggerConfig::Target.
enum class Target : std::int32_t { TargetSystemd, TargetStdout, TargetStderr, TargetFile };

struct LogTarget {
  Target target = Target::TargetFile;
  std::shared_ptr<OutputFile> file;  // null for the journal and for a target that drops all
};

}  // namespace Cradle::Parser::Logging
