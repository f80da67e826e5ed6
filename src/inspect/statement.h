// SPDX-License-Identifier: MIT
// What each line about a key still has to say in the end.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "inspect/journal.h"

namespace Cradle::Inspect {

enum class State : std::uint8_t {
  Effective,   // counts
  Overridden,  // a later value counts
  Cleared,     // a later line clears the key
  Empty,       // its templates gave nothing
  Discarded,   // a template of it failed
  Clearing,    // the line that clears the key
};

std::string_view nameOf(State state);

// A value of a key, or the clearing of it.
struct Statement {
  const Assignment* assignment;
  const Part* part;  // null for a clearing
  State state;
  const Assignment* by = nullptr;  // what overrode or cleared it
};

// All of a history, in load order. Where the key takes one value the last one counts.
std::vector<Statement> statementsOf(const History& history, bool takesOne);

}  // namespace Cradle::Inspect
