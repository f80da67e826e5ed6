// SPDX-License-Identifier: MIT
// The life of one key: what was assigned, what came of it, and what becomes of it.
#pragma once

#include <string>
#include <vector>

#include "inspect/inspection.h"
#include "inspect/key_table.h"
#include "inspect/output_probe.h"
#include "inspect/reference_walk.h"
#include "inspect/statement.h"

namespace Cradle::Inspect {

struct Explanation {
  Explanation(const Inspection& inspection, std::string_view groupName, std::string_view keyName);

  // A value that counts, or would if nothing came behind it.
  struct Value {
    const Statement* statement;
    std::string text;    // with its references followed
    bool fits;           // the key's type, as far as both are known
    ReferenceWalk walk;  // of its references
  };

  std::string group;
  std::string key;
  const Generators::KeyReference* known;  // null for a key that no output reads
  std::vector<Statement> statements;      // all of it, in load order
  std::vector<Value> values;              // the effective ones
  bool isComplete = true;                 // the texts of all of these are known
  std::string generated;                  // the line in a generated configuration; empty for none
  std::vector<ProbedRow> rows;            // of the other outputs
};

}  // namespace Cradle::Inspect
