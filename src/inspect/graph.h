// SPDX-License-Identifier: MIT
// Keys, the files that they come from, and the references between them.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "inspect/inspection.h"

namespace Cradle::Inspect {

struct GraphKey {
  bool isSet = false;
  std::string place = {};                    // "path:line" of the last value that counts
  std::vector<std::string> overridden = {};  // places of values that count no more
};

struct GraphReference {
  Parser::ValueName from;
  Parser::ValueName to;
  bool inCircle;
};

struct Graph {
  std::vector<std::string> files;  // in load order
  std::map<Parser::ValueName, GraphKey> keys;
  std::vector<GraphReference> references;
};

// The keys that refer or are referred to; with `all` every key.
Graph makeGraph(const Inspection& inspection, bool all);

}  // namespace Cradle::Inspect
