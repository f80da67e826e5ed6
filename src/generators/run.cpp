// SPDX-License-Identifier: MIT
#include "generators/run.h"

#include "base/text.h"
#include "generators/generated_user.h"
#include "library_logger.h"

namespace Cradle::Generators {
namespace {

bool loadConfiguration(Parser::ConfigParser& parser, const std::vector<std::string>& directories) {
  const Parser::LoadResult result = parser.loadDirectories(directories);
  if (result == Parser::LoadResult::NothingToLoad) {
    Parser::libraryLogger().error() << "No configuration to read in " << join(directories, ", ");
  }
  return result == Parser::LoadResult::Loaded;
}

}  // namespace

std::unique_ptr<Run> settleRun(const RunKind& kind, const std::vector<std::string>& directories,
                               const RunFacts& given, std::int32_t patience) {
  RunFacts facts = given;
  const GeneratedUser user = kind.readsGenerated
                                 ? resolveGeneratedUser(directories, facts, patience)
                                 : resolveUser(facts, patience);
  if (user == GeneratedUser::Failed) {
    return nullptr;
  }
  // The generated configuration is made with the user id as given: where that is still to be
  // detected, "dconf" templates read in the environment as it is.
  auto run = std::make_unique<Run>(kind.readsGenerated ? facts.userId : given.userId);
  run->facts = facts;
  run->fromGenerated = user == GeneratedUser::Found;
  if (!run->fromGenerated) {
    addNamedTemplates(run->parser, facts, kind.definesOdmDirectory);
    run->hookArguments = hookArguments(facts);
  }
  return run;
}

std::unique_ptr<Run> prepareRun(const RunKind& kind, const std::vector<std::string>& directories,
                                const RunFacts& given) {
  std::unique_ptr<Run> run = settleRun(kind, directories, given);
  return run && loadConfiguration(run->parser, directories) ? std::move(run) : nullptr;
}

}  // namespace Cradle::Generators
