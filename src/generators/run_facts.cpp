#include "generators/run_facts.h"

#include <filesystem>
#include <system_error>

#include "base/text.h"
#include "library_logger.h"

namespace Cradle::Generators {
namespace {

// Where the host keeps its ODM partition's files: newer devices have one, older ones use /vendor.
std::string odmDirectory() {
  std::error_code ignored;
  return std::filesystem::exists("/odm/lib", ignored) ? "/odm" : "/vendor";
}

}  // namespace

std::vector<std::string> hookArguments(const RunFacts& facts) {
  return {std::to_string(facts.userId), facts.user, facts.home, facts.instance,
          std::to_string(facts.baseUid)};
}

void addNamedTemplates(Parser::ConfigParser& parser, const RunFacts& facts) {
  parser.addTemplate("HOME", facts.home);
  parser.addTemplate("INSTANCE", facts.instance);
  parser.addTemplate("ODM_DIR", odmDirectory());
  parser.addTemplate("USER", facts.user);
  parser.addTemplate("USER_ID", std::to_string(facts.userId));
}

bool loadConfiguration(Parser::ConfigParser& parser, const std::vector<std::string>& directories) {
  const Parser::LoadResult result = parser.loadDirectories(directories);
  if (result == Parser::LoadResult::NothingToLoad) {
    Parser::libraryLogger().error() << "No configuration to read in " << join(directories, ", ");
  }
  return result == Parser::LoadResult::Loaded;
}

}  // namespace Cradle::Generators
