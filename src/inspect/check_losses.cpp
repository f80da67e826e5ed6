// SPDX-License-Identifier: MIT
// Findings: values that a later file takes away. Within one file that is no news, and most keys are
// assigned only once.

#include "inspect/findings.h"
#include "inspect/key_table.h"
#include "inspect/statement.h"

namespace Cradle::Inspect {
namespace {

void checkHistory(const std::string& group, const std::string& key, const History& history,
                  const Journal& journal, Findings& findings) {
  const std::string name = nameOfKey(group, key);
  for (const Statement& statement : statementsOf(history, takesOne(group, key))) {
    if (statement.by == nullptr || statement.by->place.file == statement.assignment->place.file) {
      continue;
    }
    const FindingId id =
        statement.state == State::Cleared ? FindingId::ClearedValue : FindingId::OverriddenValue;
    findings.add(id, statement.assignment->place,
                 {name, journal.nameOf(statement.by->place), name});
  }
}

}  // namespace

void checkLosses(const Inspection& inspection, Findings& findings) {
  for (const auto& [group, histories] : inspection.journal.groups) {
    if (isRefusedLine(group)) {
      continue;
    }
    for (const auto& [key, history] : histories) {
      if (history.size() > 1) {
        checkHistory(group, key, history, inspection.journal, findings);
      }
    }
  }
}

}  // namespace Cradle::Inspect
