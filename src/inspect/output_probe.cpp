// SPDX-License-Identifier: MIT
#include "inspect/output_probe.h"

#include <array>

#include "config_writer.h"
#include "generators/lxc_rows.h"
#include "generators/output_row.h"
#include "generators/property_rows.h"
#include "inspect/memory_file.h"
#include "inspect/refusal.h"

namespace Cradle::Inspect {
namespace {

using Generators::ConfigKey;
using Generators::OutputRow;
using Parser::ConfigWriter;

struct Table {
  std::string_view output;
  ConfigWriter::Separator separator;
  std::span<const OutputRow> (*rows)();
};

constexpr std::array<Table, 2> kTables{{
    {"lxc", ConfigWriter::Separator::Spaced, Generators::lxcRows},
    {"property", ConfigWriter::Separator::Plain, Generators::propertyRows},
}};

bool same(const ConfigKey& left, const ConfigKey& right) {
  return left.group == right.group && left.key == right.key;
}

std::string conditionOf(const OutputRow& row) {
  if (row.condition == nullptr) {
    return "";
  }
  std::string words(row.condition->name);
  if (!row.when.source.key.empty()) {
    words.append(" ").append(row.when.source.group).append("/").append(row.when.source.key);
    words.append(" is ").append(row.when.text);
  }
  return words;
}

ProbedRow probe(const Inspection& inspection, const Table& table, OutputRow row) {
  const MemoryFile file;
  ConfigWriter writer(file.path(), table.separator);
  Generators::OutputContext context{
      .run = *inspection.run, .directories = inspection.directories(), .writer = writer};
  row.comment = {};
  const bool written = Generators::writeRows(context, {&row, 1});
  return {table.output, std::string(row.key), file.text(), conditionOf(row), !written};
}

}  // namespace

std::vector<ProbedRow> probeRows(const Inspection& inspection, const ConfigKey& key) {
  const Refusal refusal;
  std::vector<ProbedRow> probed;
  for (const Table& table : kTables) {
    for (const OutputRow& row : table.rows()) {
      const bool writesLines = !row.key.empty() || row.lines != nullptr;
      if (writesLines && (same(row.source, key) || same(row.when.source, key))) {
        probed.push_back(probe(inspection, table, row));
      }
    }
  }
  return probed;
}

std::string_view endedOutput(const Inspection& inspection, const ConfigKey& key) {
  for (const ProbedRow& row : probeRows(inspection, key)) {
    if (row.ends) {
      return row.output;
    }
  }
  return "";
}

}  // namespace Cradle::Inspect
