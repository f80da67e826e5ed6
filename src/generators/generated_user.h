// For whom a run writes, when an earlier run may have settled it already.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "generators/run_facts.h"

namespace Cradle::Generators {

enum class GeneratedUser : std::int8_t {
  Failed = -1,   // a message has been logged
  Resolved = 0,  // no generated configuration: the user was detected and looked up now
  Found = 1,     // all facts come from a generated configuration
};

// Fills in the user name and home directory of the user id in `facts` from the user database.
// False, with an error logged, where there is no such user.
bool lookUpFacts(RunFacts& facts);

// Completes `facts`, which holds the user id (kUnknownUser for detection), instance and base uid of
// the command line. A generated configuration in one of the directories overrides them all; without
// a stored instance the given one stays. Otherwise the user at the machine is waited for where the
// id is unknown, and the id looked up in the user database.
GeneratedUser resolveGeneratedUser(const std::vector<std::string>& directories, RunFacts& facts);

}  // namespace Cradle::Generators
