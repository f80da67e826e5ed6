// SPDX-License-Identifier: MIT
#include "inspect/explanation.h"

#include "base/text.h"
#include "inspect/value_facts.h"

namespace Cradle::Inspect {
namespace {

// As generateConfig() joins the values: all of them, whether one or more are wanted.
std::string generatedLine(const Inspection& inspection, const std::string& key,
                          const History& history) {
  std::vector<std::string> texts;
  for (const KeptValue& value : keptValues(history)) {
    texts.push_back(inspection.textOf(value.part->value));
  }
  return texts.empty() ? "" : key + "=" + join(texts, ";");
}

// Lists leave out what references make empty.
bool isLeftOut(const Generators::KeyReference& key, const std::string& text) {
  return text.empty() && !takesOne(key);
}

}  // namespace

Explanation::Explanation(const Inspection& inspection, std::string_view groupName,
                         std::string_view keyName)
    : group(groupName), key(keyName), known(findKey(group, key)) {
  if (known != nullptr) {
    rows = probeRows(inspection, known->name);
  }
  const History* const history = inspection.journal.find(group, key);
  if (history == nullptr) {
    return;
  }
  const std::string name = group + "/" + key;
  generated = isRefusedLine(group) ? "" : generatedLine(inspection, key, *history);
  statements = statementsOf(*history, takesOne(group, key));
  ValueFacts facts(inspection);
  for (const Statement& statement : statements) {
    if (statement.state == State::Effective) {
      const Part& part = *statement.part;
      const std::string text = inspection.textOf(part.value);
      const bool isKnown = facts.of(part).textIsKnown();
      const bool fits = known == nullptr || !isKnown || isLeftOut(*known, text) ||
                        Generators::accepts(*known, text);
      isComplete = isComplete && isKnown;
      values.push_back({&statement, text, fits, followReferences(inspection.journal, name, part)});
    }
  }
  for (ProbedRow& row : rows) {
    row.ends = row.ends && isComplete;
  }
}

}  // namespace Cradle::Inspect
