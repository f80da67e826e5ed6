// SPDX-License-Identifier: MIT
// For whom a run writes: as the host says, or as an earlier run has settled it.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "generators/run_facts.h"
#include "generators/seat_user.h"

namespace Cradle::Generators {

enum class GeneratedUser : std::int8_t {
  Failed = -1,   // a message has been logged
  Resolved = 0,  // no generated configuration: the user was detected and looked up now
  Found = 1,     // all facts come from a generated configuration
};

// Completes `facts`, which holds the user id of the command line, from the host alone: the user at
// the machine is waited for where the id is kUnknownUser, as long as `patience` says (see
// seat_user.h); user name and home directory come from the user database. Never Found.
GeneratedUser resolveUser(RunFacts& facts, std::int32_t patience = kSeatUserTimeout);

// The same, unless one of the directories holds a generated configuration. Its facts then replace
// all others; without a stored instance the given one stays.
GeneratedUser resolveGeneratedUser(const std::vector<std::string>& directories, RunFacts& facts,
                                   std::int32_t patience = kSeatUserTimeout);

}  // namespace Cradle::Generators
