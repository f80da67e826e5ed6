// SPDX-License-Identifier: MIT
#include "inspect/program.h"

#include <optional>

#include "base/table.h"
#include "inspect/command_functions.h"
#include "inspect/help.h"
#include "inspect/options.h"
#include "inspect/printable.h"

namespace Cradle::Inspect {
namespace {

Answer misused(const std::string& error) {
  const std::string program = kProgram;
  return {"", kTrouble, program + ": " + error + "Try '" + program + " --help'.\n"};
}

Answer runCommand(const Options& options) {
  if (options.words.empty()) {
    return misused("which command?\n");
  }
  const std::string& name = options.words.front();
  const Command* const command = findRow(commands(), &Command::name, name);
  if (command == nullptr) {
    return misused(printable(name) + ": unknown command\n");
  }
  const std::span<const std::string> operands = std::span(options.words).subspan(1);
  if (operands.size() < command->fewest || operands.size() > command->most) {
    return misused(name + " takes " +
                   std::string(command->operands.empty() ? "no operand" : command->operands) +
                   "\n");
  }
  if (options.format == OutputFormat::Svg && command->run != runGraph) {
    return misused("--format svg is for graph\n");
  }
  return command->run(options, operands);
}

Answer run(std::span<char*> arguments) {
  std::string errors;
  const std::optional<Options> options = parseOptions(arguments, errors);
  if (!options) {
    return misused(errors);
  }
  if (options->help) {
    return {helpText()};
  }
  return options->version ? Answer{versionText()} : runCommand(*options);
}

}  // namespace

Answer runProgram(std::span<char*> arguments) {
  Answer answer = run(arguments);
  answer.errors = printableLines(answer.errors);
  return answer;
}

}  // namespace Cradle::Inspect
