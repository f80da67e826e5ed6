// SPDX-License-Identifier: MIT
// "files": what a run would read, run and copy, in its order, and what it would pass over.

#include "inspect/command_functions.h"
#include "inspect/finding_text.h"
#include "inspect/json.h"
#include "inspect/source_tree.h"

namespace Cradle::Inspect {
namespace {

JsonObject toJson(const SourceFile& file) {
  return JsonObject()
      .with("path", file.path)
      .with("action", file.action == Action::PassOver ? "pass-over" : nameOf(file.action))
      .with("mode", file.mode)
      .with("owner", file.owner)
      .with("fault", file.fault);
}

std::vector<Page::Row> toRows(const std::vector<SourceFile>& files) {
  std::vector<Page::Row> rows;
  for (const SourceFile& file : files) {
    const Tone tone = file.action == Action::PassOver ? Tone::Faint : Tone::Error;
    Page::Row row{{std::string(nameOf(file.action)), Tone::Strong},
                  {file.mode.empty() ? "----" : file.mode},
                  {file.owner.empty() ? "-" : file.owner},
                  {file.path}};
    if (!file.fault.empty()) {
      row.push_back({file.fault, tone});
    }
    rows.push_back(std::move(row));
  }
  return rows;
}

}  // namespace

Answer runFiles(const Options& options, std::span<const std::string> /*operands*/) {
  const Inspection inspection = inspect(options.run, false);
  const SourceTree tree = findSources(inspection);
  std::string refusals = refusalText(inspection);
  const int status = refusals.empty() ? kFine : kFindings;
  if (options.format == OutputFormat::Json) {
    return {dump(JsonObject()
                     .with("used", jsonList(tree.used, toJson))
                     .with("passed_over", jsonList(tree.passed, toJson))),
            status, std::move(refusals)};
  }
  Page page(wantsColour(options.colour));
  page.table(toRows(tree.used));
  if (!tree.passed.empty()) {
    page.line("").line("Passed over:", Tone::Strong).table(toRows(tree.passed));
  }
  return {page.text(), status, std::move(refusals)};
}

}  // namespace Cradle::Inspect
