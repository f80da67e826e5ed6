// SPDX-License-Identifier: MIT
#include "inspect/statement_json.h"

namespace Cradle::Inspect {

JsonObject placeJson(const Journal& journal, Place place) {
  return JsonObject()
      .with("file", std::string_view(journal.files[place.file].path))
      .with("line", place.line);
}

JsonObject statementJson(const Journal& journal, const Statement& statement) {
  const std::string_view raw =
      statement.part == nullptr ? "" : std::string_view(statement.part->raw);
  return placeJson(journal, statement.assignment->place)
      .with("state", nameOf(statement.state))
      .with("raw", raw)
      .with("by", statement.by == nullptr ? Json() : placeJson(journal, statement.by->place));
}

}  // namespace Cradle::Inspect
