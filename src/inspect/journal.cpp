// SPDX-License-Identifier: MIT
#include "inspect/journal.h"

#include <algorithm>

namespace Cradle::Inspect {

bool Part::awaitsCommand() const {
  return std::any_of(substitutions.begin(), substitutions.end(),
                     [](const Substitution& made) { return made.outcome == Outcome::NotRun; });
}

const History* Journal::find(std::string_view group, std::string_view key) const {
  const auto keys = groups.find(group);
  if (keys == groups.end()) {
    return nullptr;
  }
  const auto history = keys->second.find(key);
  return history == keys->second.end() ? nullptr : &history->second;
}

std::string Journal::nameOf(Place place) const {
  return files[place.file].path + ":" + std::to_string(place.line);
}

bool isRefusedLine(std::string_view group) {
  return group.find('[') != group.npos;
}

std::string titleOf(std::string_view group) {
  return isRefusedLine(group) ? std::string(group) : "[" + std::string(group) + "]";
}

std::string nameOfKey(std::string_view group, std::string_view key) {
  return std::string(group).append("/").append(key);
}

std::vector<KeptValue> keptValues(const History& history) {
  std::vector<KeptValue> kept;
  for (const Assignment& assignment : history) {
    if (assignment.clears()) {
      kept.clear();
    }
    for (const Part& part : assignment.parts) {
      if (part.fate == Fate::Kept) {
        kept.push_back({&assignment, &part});
      }
    }
  }
  return kept;
}

}  // namespace Cradle::Inspect
