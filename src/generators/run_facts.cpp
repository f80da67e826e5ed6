// SPDX-License-Identifier: MIT
#include "generators/run_facts.h"

#include <unistd.h>

namespace Cradle::Generators {
namespace {

// Where the host keeps its ODM partition's files: newer devices have one, older ones use /vendor.
std::string odmDirectory() {
  return access("/odm/lib", F_OK) == 0 ? "/odm" : "/vendor";
}

}  // namespace

std::vector<std::string> hookArguments(const RunFacts& facts) {
  return {std::to_string(facts.userId), facts.user, facts.home, facts.instance,
          std::to_string(facts.baseUid)};
}

void addNamedTemplates(Parser::ConfigParser& parser, const RunFacts& facts, bool withOdmDirectory) {
  parser.addTemplate("HOME", facts.home);
  parser.addTemplate("INSTANCE", facts.instance);
  if (withOdmDirectory) {
    parser.addTemplate("ODM_DIR", odmDirectory());
  }
  parser.addTemplate("USER", facts.user);
  parser.addTemplate("USER_ID", std::to_string(facts.userId));
}

}  // namespace Cradle::Generators
