// SPDX-License-Identifier: MIT
#include "inspect/explain_json.h"

#include <array>

#include "inspect/json.h"

namespace Cradle::Inspect {
namespace {

constexpr std::array<std::string_view, 8> kOutcomes{"text",           "reference", "not-run",
                                                    "no-value",       "malformed", "unknown-name",
                                                    "unknown-format", "no-file"};
constexpr std::array<std::string_view, 3> kEnds{"resolved", "circle", "too-deep"};

Json toJson(const Inspection& inspection, Place place) {
  return {{"file", inspection.journal.files[place.file].path}, {"line", place.line}};
}

Json toJson(const Inspection& inspection, const Statement& statement) {
  Json json = toJson(inspection, statement.assignment->place);
  json["state"] = nameOf(statement.state);
  json["raw"] = statement.part == nullptr ? "" : statement.part->raw;
  json["by"] = statement.by == nullptr ? Json() : toJson(inspection, statement.by->place);
  json["substitutions"] = Json::array();
  if (statement.part != nullptr) {
    for (const Substitution& made : statement.part->substitutions) {
      json["substitutions"].push_back(
          {{"template", made.spec},
           {"outcome", kOutcomes.at(static_cast<std::size_t>(made.outcome))},
           {"text", made.text}});
    }
  }
  return json;
}

Json toJson(const Inspection& inspection, const ReferenceStep& step) {
  Json json{{"depth", step.depth}, {"key", step.name->first + "/" + step.name->second}};
  json["set"] = step.value.part != nullptr;
  if (step.value.part != nullptr) {
    json["text"] = inspection.textOf(step.value.part->value);
    json.update(toJson(inspection, step.value.assignment->place));
  }
  return json;
}

Json toJson(const Inspection& inspection, const Explanation::Value& value) {
  Json json = toJson(inspection, value.statement->assignment->place);
  json["text"] = value.text;
  json["fits"] = value.fits;
  json["resolution"] = kEnds.at(static_cast<std::size_t>(value.walk.end));
  json["references"] = Json::array();
  for (const ReferenceStep& step : value.walk.steps) {
    json["references"].push_back(toJson(inspection, step));
  }
  json["circle"] = value.walk.circle;
  return json;
}

Json toJson(const Generators::KeyReference& known) {
  return {{"meaning", known.meaning},
          {"type", known.type},
          {"words", known.words},
          {"absent", known.absent}};
}

}  // namespace

std::string explainJson(const Inspection& inspection, const Explanation& explanation) {
  Json json{{"group", explanation.group}, {"key", explanation.key}};
  json["known"] = explanation.known == nullptr ? Json() : toJson(*explanation.known);
  json["statements"] = Json::array();
  for (const Statement& statement : explanation.statements) {
    json["statements"].push_back(toJson(inspection, statement));
  }
  json["values"] = Json::array();
  for (const Explanation::Value& value : explanation.values) {
    json["values"].push_back(toJson(inspection, value));
  }
  json["generated"] = explanation.generated;
  json["outputs"] = Json::array();
  for (const ProbedRow& row : explanation.rows) {
    json["outputs"].push_back({{"output", row.output},
                               {"key", row.key},
                               {"text", row.text},
                               {"condition", row.condition},
                               {"ends", row.ends}});
  }
  return dump(json);
}

}  // namespace Cradle::Inspect
