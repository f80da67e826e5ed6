// SPDX-License-Identifier: MIT
#include "inspect/statement_json.h"

namespace Cradle::Inspect {

JsonObject placeJson(const Journal& journal, Place place) {
  return {{"file", std::string_view(journal.files[place.file].path)}, {"line", place.line}};
}

JsonObject statementJson(const Journal& journal, const Statement& statement) {
  const std::string_view raw =
      statement.part == nullptr ? "" : std::string_view(statement.part->raw);
  JsonObject json = placeJson(journal, statement.assignment->place);
  json.insert(json.end(),
              {{"state", nameOf(statement.state)},
               {"raw", raw},
               {"by", statement.by == nullptr ? Json() : placeJson(journal, statement.by->place)}});
  return json;
}

}  // namespace Cradle::Inspect
