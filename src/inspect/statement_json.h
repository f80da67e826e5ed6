// SPDX-License-Identifier: MIT
// Places and statements as JSON, the same in what every command prints. The texts are the
// journal's.
#pragma once

#include "inspect/journal.h"
#include "inspect/json.h"
#include "inspect/statement.h"

namespace Cradle::Inspect {

// Has "file" and "line".
JsonObject placeJson(const Journal& journal, Place place);

// Has its place, "state", "raw" and "by", the place of what ended it or null.
JsonObject statementJson(const Journal& journal, const Statement& statement);

}  // namespace Cradle::Inspect
