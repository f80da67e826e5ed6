// SPDX-License-Identifier: MIT
// "explain": the life of one key.

#include "base/text.h"
#include "inspect/command_functions.h"
#include "inspect/explain_json.h"
#include "inspect/explain_text.h"
#include "inspect/finding_text.h"
#include "inspect/printable.h"

namespace Cradle::Inspect {

Answer runExplain(const Options& options, std::span<const std::string> operands) {
  const KeyPattern pattern(operands.front());
  if (pattern.key.empty()) {
    return {"", kTrouble, printable(operands.front()) + ": name a key as GROUP/KEY\n"};
  }
  const Inspection inspection = inspect(options.run, options.execute);
  const Explanation explanation(inspection, pattern.group, pattern.key);
  const bool isThere = explanation.known != nullptr || !explanation.statements.empty();
  std::string refusals = refusalText(inspection);
  const int status = isThere && refusals.empty() ? kFine : kFindings;
  return {options.format == OutputFormat::Json
              ? explainJson(inspection, explanation)
              : explainText(inspection, explanation, wantsColour(options.colour)),
          status, std::move(refusals)};
}

}  // namespace Cradle::Inspect
