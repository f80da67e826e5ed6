// SPDX-License-Identifier: MIT
// cradle-inspect-config: looks at what cradle-generate-config reads, and tells what it sees.

#include <cerrno>
#include <cstring>
#include <span>
#include <string>

#include "base/output_file.h"
#include "inspect/help.h"
#include "inspect/program.h"
#include "library_logger.h"
#include "main/standard_streams.h"

int main(int argc, char** argv) {
  using Cradle::Parser::libraryLogger;
  using Cradle::Parser::Logging::LoggerConfig;
  Cradle::CommandLine::fillStandardDescriptors();
  Cradle::CommandLine::surviveBrokenPipes();
  // What the library would log is what the commands tell, each in its place.
  libraryLogger().setTarget(LoggerConfig::TargetStderr);
  libraryLogger().setLevel(LoggerConfig::LogCritical);

  const Cradle::Inspect::Answer answer =
      Cradle::Inspect::runProgram({argv, static_cast<std::size_t>(argc)});
  Cradle::standardError().write(answer.errors);
  Cradle::standardOutput().write(answer.text);
  if (Cradle::standardOutput().good()) {
    return answer.status;
  }
  // A reader that has seen enough is no trouble.
  if (errno == EPIPE) {
    return answer.status;
  }
  Cradle::standardError().write(std::string(Cradle::Inspect::kProgram) +
                                ": cannot write: " + std::strerror(errno) + "\n");
  return Cradle::Inspect::kTrouble;
}
