// SPDX-License-Identifier: MIT
#include "generators/output_row.h"

#include <algorithm>

namespace Cradle::Generators {
namespace {

bool writeLine(OutputContext& context, const OutputRow& row) {
  const std::optional<std::string> text = row.format->text(context, row);
  if (text) {
    context.writer.writeValue(row.key, std::string(row.prefix) + *text + std::string(row.suffix));
  }
  return text.has_value();
}

bool writeRow(OutputContext& context, const OutputRow& row) {
  if (row.condition != nullptr && !row.condition->holds(context, row)) {
    return true;
  }
  if (!row.comment.empty()) {
    context.writer.writeComment(row.comment);
  }
  if (row.lines != nullptr) {
    return row.lines(context, row);
  }
  return row.key.empty() || writeLine(context, row);
}

}  // namespace

bool writeRows(OutputContext& context, std::span<const OutputRow> rows) {
  return std::all_of(rows.begin(), rows.end(),
                     [&](const OutputRow& row) { return writeRow(context, row); });
}

void writeStoredBlock(OutputContext& context, const ConfigKey& source, std::string_view comment,
                      std::string_view endComment) {
  if (!context.config.has(source)) {
    return;
  }
  context.writer.writeComment(comment);
  for (const std::string& line : context.config.list(source)) {
    context.writer.writeContent(line);
  }
  context.writer.writeComment(endComment);
}

}  // namespace Cradle::Generators
