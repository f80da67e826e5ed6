// SPDX-License-Identifier: MIT
// "diff": what a run would change in an output file. The run is a real one, made by the generators,
// but for where it writes, and for the commands that it starts only with --run.

#include <array>

#include <unistd.h>

#include "base/text.h"
#include "generators/generated_config.h"
#include "generators/lxc_config.h"
#include "generators/property_file.h"
#include "inspect/command_functions.h"
#include "inspect/finding_text.h"
#include "inspect/help.h"
#include "inspect/inspection.h"
#include "inspect/json.h"
#include "inspect/memory_file.h"
#include "inspect/page.h"
#include "inspect/readability.h"
#include "inspect/refusal.h"
#include "inspect/unified_diff.h"
#include "library_logger.h"

namespace Cradle::Inspect {
namespace {

using Parser::Logging::LoggerConfig;

// One per output type, in the order of their values.
constexpr std::array kGenerators{Generators::generateConfig, Generators::generateProperties,
                                 Generators::generateLxc};

// What a run says is kept while one of these lives.
class AudibleRun {
 public:
  AudibleRun() {
    Parser::libraryLogger().setTarget(words_.path());
    Parser::libraryLogger().setLevel(LoggerConfig::LogWarning);
  }
  ~AudibleRun() {
    Parser::libraryLogger().setLevel(LoggerConfig::LogCritical);
    Parser::libraryLogger().setTarget(LoggerConfig::TargetStderr);
  }
  AudibleRun(const AudibleRun&) = delete;
  AudibleRun& operator=(const AudibleRun&) = delete;

  std::string text() const { return words_.text(); }

 private:
  MemoryFile words_;
};

struct TrialRun {
  std::string text;
  int status;
  std::vector<std::string> notDone;
  std::string words;
};

TrialRun tryRun(const CommandLine::Settings& settings, bool execute) {
  const Refusal refusal(execute);
  const AudibleRun audible;
  const MemoryFile file;
  const auto generate = kGenerators.at(static_cast<std::size_t>(settings.type));
  const int status = generate(file.path(), settings.directories, settings.userId, settings.instance,
                              settings.baseUid);
  return {file.text(), status, Refusal::refused(), audible.text()};
}

Tone toneOf(std::string_view line) {
  if (line.starts_with('+')) {
    return Tone::Added;
  }
  if (line.starts_with('-')) {
    return Tone::Removed;
  }
  return line.starts_with('@') ? Tone::Note : Tone::Plain;
}

std::string textOf(const DiffLines& lines, bool coloured) {
  Page page(coloured);
  for (const std::string& line : lines) {
    page.line(line, toneOf(line));
  }
  return page.text();
}

// As "patch" takes it.
std::string patchOf(const DiffLines& lines) {
  return lines.empty() ? "" : join(lines, "\n") + "\n";
}

Answer trouble(const std::string& why) {
  return {"", kTrouble, std::string(kProgram) + ": " + why + "\n"};
}

}  // namespace

Answer runDiff(const Options& options, std::span<const std::string> operands) {
  const std::string& output = operands.front();
  const std::optional<std::string> before =
      whyNoFile(output).empty() ? readWholeFile(output) : std::nullopt;
  if (!before) {
    return trouble(printable(output) + ": " + whyUnreadable(output));
  }
  const Inspection inspection = inspect(options.run, false);
  const std::string refusals = refusalText(inspection) + waitText(inspection);
  if (!refusals.empty()) {
    return {"", kTrouble, refusals + std::string(kProgram) + ": the run would not end well\n"};
  }
  if (!inspection.userIsKnown) {
    return trouble("the user of a run is not known; name one with --user-id");
  }
  const TrialRun trial = tryRun(options.run, options.execute);
  std::string errors = trial.words;
  for (const std::string& what : trial.notDone) {
    errors += "not done without --run: " + printable(what) + "\n";
  }
  if (trial.status != 0) {
    const std::string_view end = trial.notDone.empty()
                                     ? ": the run would fail\n"
                                     : ": the run ends early without what only --run does\n";
    return {"", kTrouble, errors + std::string(kProgram).append(end)};
  }
  // Every output has a first line.
  if (trial.text.empty()) {
    return trouble("there is no room for the output of the run");
  }
  const DiffLines lines = unifiedDiff(*before, trial.text, output, output + " (new)");
  const int status = lines.empty() ? kFine : kFindings;
  if (options.format == OutputFormat::Json) {
    return {dump(JsonObject()
                     .with("output", output)
                     .with("not_done", jsonList(trial.notDone))
                     .with("diff", jsonList(lines))),
            status, errors};
  }
  const bool coloured = wantsColour(options.colour);
  const bool forPeople = coloured || isatty(STDOUT_FILENO) == 1;
  return {forPeople ? textOf(lines, coloured) : patchOf(lines), status, errors};
}

}  // namespace Cradle::Inspect
