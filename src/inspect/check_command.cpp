// SPDX-License-Identifier: MIT
// "check": what is wrong or doubtful, each with its place and what to do about it.

#include <array>
#include <utility>

#include "inspect/command_functions.h"
#include "inspect/finding_text.h"
#include "inspect/json.h"

namespace Cradle::Inspect {
namespace {

constexpr std::array kChecks{checkFiles,      checkNames,  checkValues,  checkTemplates,
                             checkReferences, checkLosses, checkSources, checkContributions};

std::vector<Finding> findAll(const Inspection& inspection) {
  Findings findings(inspection.journal);
  for (const auto check : kChecks) {
    check(inspection, findings);
  }
  return findings.take();
}

std::string counted(std::size_t count, std::string_view what) {
  return std::to_string(count) + " " + std::string(what) + (count == 1 ? "" : "s");
}

std::string summaryOf(const std::vector<Finding>& findings) {
  return counted(countOf(findings, Severity::Error), "error") + ", " +
         counted(countOf(findings, Severity::Warning), "warning") + ", " +
         counted(countOf(findings, Severity::Note), "note");
}

std::string textOf(const std::vector<Finding>& findings, bool coloured) {
  Page page(coloured);
  for (const Finding& finding : findings) {
    putFinding(page, finding);
    page.line("    " + finding.advice, Tone::Faint);
  }
  return page.line(summaryOf(findings), Tone::Strong).text();
}

JsonObject toJson(const FindingKind& kind) {
  return JsonObject()
      .with("kind", kind.name)
      .with("severity", nameOf(kind.severity))
      .with("sentence", kind.sentence)
      .with("advice", kind.advice);
}

std::string jsonOf(const std::vector<Finding>& findings) {
  const auto findingJson = [](const Finding& finding) {
    return JsonObject()
        .with("kind", finding.kind->name)
        .with("severity", nameOf(finding.kind->severity))
        .with("file", std::string_view(finding.path))
        .with("line", finding.line)
        .with("sentence", std::string_view(finding.sentence))
        .with("advice", std::string_view(finding.advice));
  };
  return dump(JsonObject()
                  .with("findings", jsonList(findings, findingJson))
                  .with("errors", countOf(findings, Severity::Error))
                  .with("warnings", countOf(findings, Severity::Warning))
                  .with("notes", countOf(findings, Severity::Note)));
}

}  // namespace

Answer runCheck(const Options& options, std::span<const std::string> /*operands*/) {
  const std::vector<Finding> findings = findAll(inspect(options.run, options.execute));
  const bool fine = countOf(findings, Severity::Error) == 0 &&
                    (!options.strict || countOf(findings, Severity::Warning) == 0);
  return {options.format == OutputFormat::Json ? jsonOf(findings)
                                               : textOf(findings, wantsColour(options.colour)),
          fine ? kFine : kFindings};
}

Answer runFindings(const Options& options, std::span<const std::string> /*operands*/) {
  if (options.format == OutputFormat::Json) {
    return {dump(JsonObject().with("kinds", jsonList(findingKinds(), toJson)))};
  }
  Page page(wantsColour(options.colour));
  for (const FindingKind& kind : findingKinds()) {
    page.put(kind.name, Tone::Strong)
        .put(std::string(" (").append(nameOf(kind.severity)).append(")"))
        .endLine()
        .line("    " + std::string(kind.sentence))
        .line("    " + std::string(kind.advice), Tone::Faint);
  }
  return {page.text()};
}

}  // namespace Cradle::Inspect
