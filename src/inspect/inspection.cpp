// SPDX-License-Identifier: MIT
#include "inspect/inspection.h"

#include <algorithm>
#include <array>
#include <utility>

#include "config_file_iterator.h"
#include "config_files.h"
#include "generators/generated_group.h"
#include "inspect/journal_reader.h"
#include "inspect/readability.h"
#include "inspect/refusal.h"
#include "inspect/substitution.h"
#include "template_scan.h"

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

constexpr std::array<std::string_view, 3> kUserNames{"HOME", "USER", "USER_ID"};

RunFacts givenFacts(const Settings& settings) {
  return {.userId = settings.userId, .instance = settings.instance, .baseUid = settings.baseUid};
}

bool namesNoFile(std::string_view value) {
  bool found = false;
  std::string text;
  Parser::scanTemplates(value, text, [&](std::string_view spec) {
    found = found || !whyNoFile(fileOf(spec)).empty();
    return true;
  });
  return found;
}

// Whether reading the facts of a generated configuration might not end.
bool mightNotEnd(const std::string& path) {
  if (!whyNoFile(path).empty()) {
    return true;
  }
  Parser::ConfigFileInfo info(path);
  for (Parser::ConfigFileIterator entry(info, false); !entry.key().empty(); ++entry) {
    if (entry.group() == Generators::GeneratedGroup::kName && namesNoFile(entry.value())) {
      return true;
    }
  }
  return false;
}

bool mightNotEnd(const std::vector<std::string>& directories) {
  return std::any_of(directories.begin(), directories.end(), [](const std::string& directory) {
    const std::vector<std::string> files = Parser::configFiles(directory);
    return std::any_of(files.begin(), files.end(),
                       [](const std::string& file) { return mightNotEnd(file); });
  });
}

// Where the facts of a generated configuration are out of reach, those of the host count.
std::unique_ptr<Run> settle(const Settings& settings) {
  constexpr std::int32_t kNoPatience = 0;
  const RunKind& kind = runKind(settings.type);
  const RunKind ownKind{.readsGenerated = false, .definesOdmDirectory = kind.definesOdmDirectory};
  const RunFacts facts = givenFacts(settings);
  auto run = kind.readsGenerated && mightNotEnd(settings.directories)
                 ? nullptr
                 : Generators::settleRun(kind, settings.directories, facts, kNoPatience);
  return run ? std::move(run)
             : Generators::settleRun(ownKind, settings.directories, facts, kNoPatience);
}

// A run for nobody: what is not known stands for itself.
std::unique_ptr<Run> runWithoutUser(const Settings& settings) {
  auto run = std::make_unique<Run>(Generators::kUnknownUser);
  run->facts = givenFacts(settings);
  run->facts.user = "${USER}";
  run->facts.home = "${HOME}";
  for (const std::string_view name : kUserNames) {
    run->parser.addTemplate(std::string(name), "${" + std::string(name) + "}");
  }
  Generators::addNamedTemplates(run->parser, run->facts,
                                runKind(settings.type).definesOdmDirectory);
  return run;
}

}  // namespace

bool isUserName(std::string_view name) {
  return std::find(kUserNames.begin(), kUserNames.end(), name) != kUserNames.end();
}

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
  Inspection inspection{settings, settle(settings), true, {}, execute};
  if (!inspection.run) {
    inspection.run = runWithoutUser(settings);
    inspection.userIsKnown = false;
  }
  inspection.journal = readJournal(settings.directories, inspection.run->parser, execute);
  return inspection;
}

}  // namespace Cradle::Inspect
