// SPDX-License-Identifier: MIT
// cradle-generate-config: one run, one output file, exit.

#include <array>
#include <cstdlib>
#include <span>

#include "base/output_file.h"
#include "generators/generated_config.h"
#include "generators/lxc_config.h"
#include "generators/property_file.h"
#include "library_logger.h"
#include "main/command_line.h"
#include "main/standard_streams.h"

namespace {

using Cradle::CommandLine::Settings;
using Cradle::Parser::libraryLogger;
using Cradle::Parser::Logging::LoggerConfig;

// One per output type, in the order of their values.
constexpr std::array kGenerators{
    Cradle::Generators::generateConfig,
    Cradle::Generators::generateProperties,
    Cradle::Generators::generateLxc,
};

int generate(const Settings& settings) {
  const auto generator = kGenerators.at(static_cast<std::size_t>(settings.type));
  return generator(settings.output, settings.directories, settings.userId, settings.instance,
                   settings.baseUid);
}

}  // namespace

int main(int argc, char** argv) {
  Cradle::CommandLine::fillStandardDescriptors();
  Cradle::CommandLine::surviveBrokenPipes();
  libraryLogger().setTarget(LoggerConfig::TargetStderr);
  LoggerConfig::configure(nullptr);

  const std::span<const char* const> arguments(argv, static_cast<std::size_t>(argc));
  Settings settings;
  Cradle::CommandLine::Complaint complaint;
  if (!Cradle::CommandLine::parse(arguments, settings, complaint)) {
    Cradle::standardError().write(complaint.errors);
    Cradle::standardOutput().write(complaint.usage);
    return EXIT_FAILURE;
  }
  if (!settings.logLevel.empty() && !libraryLogger().setLevel(settings.logLevel)) {
    Cradle::standardOutput().write(Cradle::CommandLine::usage(arguments.front()));
    return EXIT_FAILURE;
  }
  return generate(settings);
}
