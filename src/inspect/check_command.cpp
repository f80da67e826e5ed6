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

Json toJson(const FindingKind& kind) {
  Json json;
  json["kind"] = kind.name;
  json["severity"] = nameOf(kind.severity);
  return json;
}

// Takes the words of the findings.
std::string jsonOf(std::vector<Finding>& findings) {
  Json list = Json::array();
  for (Finding& finding : findings) {
    Json& json = list.emplace_back(toJson(*finding.kind));
    json["file"] = std::move(finding.path);
    json["line"] = finding.line;
    json["sentence"] = std::move(finding.sentence);
    json["advice"] = std::move(finding.advice);
  }
  Json document;
  document["findings"] = std::move(list);
  document["errors"] = countOf(findings, Severity::Error);
  document["warnings"] = countOf(findings, Severity::Warning);
  document["notes"] = countOf(findings, Severity::Note);
  return dump(document);
}

}  // namespace

Answer runCheck(const Options& options, std::span<const std::string> /*operands*/) {
  std::vector<Finding> findings = findAll(inspect(options.run, options.execute));
  const bool fine = countOf(findings, Severity::Error) == 0 &&
                    (!options.strict || countOf(findings, Severity::Warning) == 0);
  return {options.format == OutputFormat::Json ? jsonOf(findings)
                                               : textOf(findings, wantsColour(options.colour)),
          fine ? kFine : kFindings};
}

Answer runFindings(const Options& options, std::span<const std::string> /*operands*/) {
  Json list = Json::array();
  Page page(wantsColour(options.colour));
  for (const FindingKind& kind : findingKinds()) {
    Json& json = list.emplace_back(toJson(kind));
    json["sentence"] = kind.sentence;
    json["advice"] = kind.advice;
    page.put(kind.name, Tone::Strong)
        .put(std::string(" (").append(nameOf(kind.severity)).append(")"))
        .endLine()
        .line("    " + std::string(kind.sentence))
        .line("    " + std::string(kind.advice), Tone::Faint);
  }
  return {options.format == OutputFormat::Json ? dump({{"kinds", list}}) : page.text()};
}

}  // namespace Cradle::Inspect
