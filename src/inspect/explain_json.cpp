// SPDX-License-Identifier: MIT
#include "inspect/explain_json.h"

#include <array>
#include <utility>

#include "inspect/statement_json.h"

namespace Cradle::Inspect {
namespace {

constexpr auto kOutcomes =
    std::to_array<std::string_view>({"text", "reference", "not-run", "no-value", "malformed",
                                     "unknown-name", "unknown-format", "no-file"});
constexpr auto kEnds = std::to_array<std::string_view>({"resolved", "circle", "too-deep"});

JsonObject toJson(const Substitution& made) {
  return JsonObject()
      .with("template", made.spec)
      .with("outcome", kOutcomes.at(static_cast<std::size_t>(made.outcome)))
      .with("text", made.text);
}

JsonObject toJson(const Generators::KeyReference& known) {
  return JsonObject()
      .with("meaning", known.meaning)
      .with("type", known.type)
      .with("words", jsonList(known.words))
      .with("absent", known.absent);
}

JsonObject toJson(const ProbedRow& row) {
  return JsonObject()
      .with("output", row.output)
      .with("key", row.key)
      .with("text", row.text)
      .with("condition", row.condition)
      .with("ends", row.ends);
}

JsonObject toJson(const Inspection& inspection, const Statement& statement) {
  JsonList made;
  if (statement.part != nullptr) {
    made = jsonList(statement.part->substitutions,
                    [](const Substitution& substitution) { return toJson(substitution); });
  }
  return statementJson(inspection.journal, statement).with("substitutions", std::move(made));
}

JsonObject toJson(const Inspection& inspection, const ReferenceStep& step) {
  const std::string name = nameOfKey(step.name->first, step.name->second);
  if (step.value.part == nullptr) {
    return JsonObject().with("depth", step.depth).with("key", name).with("set", false);
  }
  return placeJson(inspection.journal, step.value.assignment->place)
      .with("depth", step.depth)
      .with("key", name)
      .with("set", true)
      .with("text", inspection.textOf(step.value.part->value));
}

JsonObject toJson(const Inspection& inspection, const Explanation::Value& value) {
  const auto stepJson = [&](const ReferenceStep& step) { return toJson(inspection, step); };
  return placeJson(inspection.journal, value.statement->assignment->place)
      .with("text", value.text)
      .with("fits", value.fits)
      .with("resolution", kEnds.at(static_cast<std::size_t>(value.walk.end)))
      .with("references", jsonList(value.walk.steps, stepJson))
      .with("circle", jsonList(value.walk.circle));
}

}  // namespace

std::string explainJson(const Inspection& inspection, const Explanation& explanation) {
  const auto itsJson = [&](const auto& of) { return toJson(inspection, of); };
  const auto rowJson = [](const ProbedRow& row) { return toJson(row); };
  return dump(JsonObject()
                  .with("group", explanation.group)
                  .with("key", explanation.key)
                  .with("known", explanation.known == nullptr ? Json() : toJson(*explanation.known))
                  .with("statements", jsonList(explanation.statements, itsJson))
                  .with("values", jsonList(explanation.values, itsJson))
                  .with("generated", explanation.generated)
                  .with("outputs", jsonList(explanation.rows, rowJson)));
}

}  // namespace Cradle::Inspect
