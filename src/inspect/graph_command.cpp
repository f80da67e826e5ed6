// SPDX-License-Identifier: MIT
// "graph": which file a key comes from and what it refers to, for Graphviz.

#include "inspect/command_functions.h"
#include "inspect/finding_text.h"
#include "inspect/graph.h"
#include "inspect/graphviz.h"

namespace Cradle::Inspect {

Answer runGraph(const Options& options, std::span<const std::string> /*operands*/) {
  const Inspection inspection = inspect(options.run, options.execute);
  const Graph graph = makeGraph(inspection, options.all);
  std::string refusals = refusalText(inspection);
  const int status = refusals.empty() ? kFine : kFindings;
  switch (options.format) {
    case OutputFormat::Json:
      return {graphJson(graph), status, std::move(refusals)};
    case OutputFormat::Text:
      return {graphDot(graph), status, std::move(refusals)};
    default:
      break;
  }
  std::optional<std::string> picture = drawSvg(graphDot(graph));
  if (!picture) {
    return {"", kTrouble, "Graphviz (dot) cannot be run\n"};
  }
  return {std::move(*picture), status, std::move(refusals)};
}

}  // namespace Cradle::Inspect
