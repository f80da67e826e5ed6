// SPDX-License-Identifier: MIT
// Findings: groups and keys that nothing knows, and values that ";" splits against the wish of
// whoever wrote them.

#include <algorithm>
#include <set>

#include "inspect/findings.h"
#include "inspect/key_table.h"
#include "inspect/question.h"

namespace Cradle::Inspect {
namespace {

using Names = std::set<Parser::ValueName>;

// Every key that some value refers to: it may be there for no other end.
Names referredKeys(const Journal& journal) {
  Names names;
  for (const auto& [group, histories] : journal.groups) {
    for (const auto& [key, history] : histories) {
      for (const Assignment& assignment : history) {
        for (const Part& part : assignment.parts) {
          const auto references = part.value.references();
          names.insert(references.begin(), references.end());
        }
      }
    }
  }
  return names;
}

Place firstPlace(const Group& histories) {
  Place first = histories.begin()->second.front().place;
  for (const auto& [key, history] : histories) {
    first = std::min(first, history.front().place);
  }
  return first;
}

void checkSplit(const std::string& name, const History& history, Findings& findings) {
  const auto isKept = [](const Part& part) { return part.fate == Fate::Kept; };
  for (const Assignment& assignment : history) {
    const std::vector<Part>& parts = assignment.parts;
    if (std::count_if(parts.begin(), parts.end(), isKept) > 1) {
      const auto last = std::find_if(parts.rbegin(), parts.rend(), isKept);
      findings.add(FindingId::SplitValue, assignment.place, {name, last->raw});
    }
  }
}

void checkKnownGroup(const std::string& group, const Group& histories, const Names& referred,
                     Findings& findings) {
  for (const auto& [key, history] : histories) {
    const Generators::KeyReference* const known = findKey(group, key);
    if (known != nullptr && takesOne(*known)) {
      checkSplit(nameOfKey(group, key), history, findings);
    } else if (known == nullptr && !referred.contains({group, key})) {
      findings.add(FindingId::UnknownKey, history.front().place,
                   {nameOfKey(group, key), questionForKey(group, key),
                    isKnownGroup(group) ? " " + group : ""});
    }
  }
}

}  // namespace

void checkNames(const Inspection& inspection, Findings& findings) {
  const Names referred = referredKeys(inspection.journal);
  for (const auto& [group, histories] : inspection.journal.groups) {
    if (isRefusedLine(group)) {
      continue;
    }
    const auto isReferred = [&, &name = group](const auto& key) {
      return referred.contains({name, key.first});
    };
    if (isKnownGroup(group) || std::any_of(histories.begin(), histories.end(), isReferred)) {
      checkKnownGroup(group, histories, referred, findings);
    } else {
      findings.add(FindingId::UnknownGroup, firstPlace(histories),
                   {group, questionForGroup(group)});
    }
  }
}

}  // namespace Cradle::Inspect
