#include "inspect/inspection.h"

#include <array>
#include <utility>

#include "inspect/journal_reader.h"
#include "inspect/refusal.h"

namespace Cradle::Inspect {
namespace {

using CommandLine::OutputType;
using CommandLine::Settings;
using Generators::Run;
using Generators::RunFacts;
using Generators::RunKind;

// One per output type, in the order of their values.
constexpr std::array kRunKinds{&Generators::kConfigRun, &Generators::kPropertyRun,
                               &Generators::kLxcRun};

constexpr std::array kUserNames{"HOME", "USER", "USER_ID"};

RunFacts givenFacts(const Settings& settings) {
  return {.userId = settings.userId, .instance = settings.instance, .baseUid = settings.baseUid};
}

// Where the facts of a generated configuration are out of reach, those of the host count.
std::unique_ptr<Run> settle(const Settings& settings) {
  constexpr std::int32_t kNoPatience = 0;
  const RunKind& kind = runKind(settings.type);
  const RunKind ownKind{.readsGenerated = false, .definesOdmDirectory = kind.definesOdmDirectory};
  const RunFacts facts = givenFacts(settings);
  auto run = Generators::settleRun(kind, settings.directories, facts, kNoPatience);
  return run ? std::move(run)
             : Generators::settleRun(ownKind, settings.directories, facts, kNoPatience);
}

// A run for nobody: what is not known stands for itself.
std::unique_ptr<Run> runWithoutUser(const Settings& settings) {
  auto run = std::make_unique<Run>(Generators::kUnknownUser);
  run->facts = givenFacts(settings);
  run->facts.user = "${USER}";
  run->facts.home = "${HOME}";
  for (const std::string name : kUserNames) {
    run->parser.addTemplate(name, "${" + name + "}");
  }
  Generators::addNamedTemplates(run->parser, run->facts,
                                runKind(settings.type).definesOdmDirectory);
  return run;
}

}  // namespace

const RunKind& runKind(OutputType type) {
  return *kRunKinds.at(static_cast<std::size_t>(type));
}

std::string Inspection::textOf(const Parser::ConfigValue& value) const {
  std::string text;
  parser().resolve(value, text);
  return text;
}

Inspection inspect(const Settings& settings, bool execute) {
  const Refusal refusal(execute);
  Inspection inspection{settings, settle(settings), true, {}};
  if (!inspection.run) {
    inspection.run = runWithoutUser(settings);
    inspection.userIsKnown = false;
  }
  inspection.journal = readJournal(settings.directories, inspection.run->parser, execute);
  return inspection;
}

}  // namespace Cradle::Inspect
