// SPDX-License-Identifier: MIT
// The references of a value, followed as a run follows them: where they lead, and whether they end.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "inspect/journal.h"

namespace Cradle::Inspect {

// As many values may take part in one resolution.
inline constexpr std::size_t kMostValues = 33;

// A key that is met on the way.
struct ReferenceStep {
  std::size_t depth;              // 1 for what the value itself refers to
  const Parser::ValueName* name;  // owned by the referring value
  KeptValue value;                // the last one of the key; with null pointers where it has none
};

struct ReferenceWalk {
  enum class End : std::uint8_t { Resolved, Circle, TooDeep };

  std::vector<ReferenceStep> steps;  // in the order of the resolution
  End end = End::Resolved;
  std::vector<std::string> circle;  // "Group/Key" from the key on to itself
};

// Follows the references of a value of `name`, up to the end of the resolution.
ReferenceWalk followReferences(const Journal& journal, const std::string& name, const Part& part);

// The last value of a key that counts, or null pointers.
KeptValue lastValue(const History* history);

}  // namespace Cradle::Inspect
