// SPDX-License-Identifier: MIT
#include "inspect/explain_json.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "inspect/statement_json.h"

namespace Cradle::Inspect {
namespace {

constexpr std::array<std::string_view, 8> kOutcomes{"text",           "reference", "not-run",
                                                    "no-value",       "malformed", "unknown-name",
                                                    "unknown-format", "no-file"};
constexpr std::array<std::string_view, 3> kEnds{"resolved", "circle", "too-deep"};

JsonObject toJson(const Substitution& made) {
  return {{"template", made.spec},
          {"outcome", kOutcomes.at(static_cast<std::size_t>(made.outcome))},
          {"text", made.text}};
}

JsonObject toJson(const Generators::KeyReference& known) {
  return {{"meaning", known.meaning},
          {"type", known.type},
          {"words", jsonList(known.words)},
          {"absent", known.absent}};
}

JsonObject toJson(const ProbedRow& row) {
  return {{"output", row.output},
          {"key", row.key},
          {"text", row.text},
          {"condition", row.condition},
          {"ends", row.ends}};
}

JsonObject toJson(const Inspection& inspection, const Statement& statement) {
  JsonObject json = statementJson(inspection.journal, statement);
  json.push_back({"substitutions", statement.part == nullptr
                                       ? JsonList()
                                       : jsonList(statement.part->substitutions,
                                                  [](const auto& made) { return toJson(made); })});
  return json;
}

JsonObject toJson(const Inspection& inspection, const ReferenceStep& step) {
  JsonObject json{{"depth", step.depth},
                  {"key", nameOfKey(step.name->first, step.name->second)},
                  {"set", step.value.part != nullptr}};
  if (step.value.part != nullptr) {
    json.push_back({"text", inspection.textOf(step.value.part->value)});
    std::ranges::move(placeJson(inspection.journal, step.value.assignment->place),
                      std::back_inserter(json));
  }
  return json;
}

JsonObject toJson(const Inspection& inspection, const Explanation::Value& value) {
  JsonObject json = placeJson(inspection.journal, value.statement->assignment->place);
  json.insert(json.end(), {{"text", value.text},
                           {"fits", value.fits},
                           {"resolution", kEnds.at(static_cast<std::size_t>(value.walk.end))},
                           {"references", jsonList(value.walk.steps,
                                                   [&](const ReferenceStep& step) {
                                                     return toJson(inspection, step);
                                                   })},
                           {"circle", jsonList(value.walk.circle)}});
  return json;
}

}  // namespace

std::string explainJson(const Inspection& inspection, const Explanation& explanation) {
  const auto itsJson = [&](const auto& of) { return toJson(inspection, of); };
  return dump(
      {{"group", explanation.group},
       {"key", explanation.key},
       {"known", explanation.known == nullptr ? Json() : toJson(*explanation.known)},
       {"statements", jsonList(explanation.statements, itsJson)},
       {"values", jsonList(explanation.values, itsJson)},
       {"generated", explanation.generated},
       {"outputs", jsonList(explanation.rows, [](const auto& row) { return toJson(row); })}});
}

}  // namespace Cradle::Inspect
