// SPDX-License-Identifier: MIT
// What single rows of the outputs make of the configuration: the rows of the real tables, written
// by the real functions, into memory.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "generators/config_reader.h"
#include "inspect/inspection.h"

namespace Cradle::Inspect {

// What a row that depends on a key writes.
struct ProbedRow {
  std::string_view output;  // "lxc" or "property"
  std::string key;          // of its lines
  std::string text;         // its lines; empty where it writes none
  std::string condition;    // when it is written; empty for always
  bool ends;                // the run ends there
};

// Every row that is made of the key or asks for it, in the order of the outputs.
std::vector<ProbedRow> probeRows(const Inspection& inspection, const Generators::ConfigKey& key);

// Whether a run of some output ends at a row that is made of the key: the output, or "".
std::string_view endedOutput(const Inspection& inspection, const Generators::ConfigKey& key);

}  // namespace Cradle::Inspect
