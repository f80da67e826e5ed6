// SPDX-License-Identifier: MIT
#include "inspect/finding_text.h"

#include <array>

#include "inspect/readability.h"

namespace Cradle::Inspect {
namespace {

// In the order of the severities.
constexpr std::array kTones{Tone::Error, Tone::Warning, Tone::Note};

std::string placeOf(const Finding& finding) {
  const std::string line = finding.line == 0 ? "" : std::to_string(finding.line) + ":";
  return finding.path.empty() ? "" : finding.path + ":" + line + " ";
}

std::string textOf(Findings& findings, bool (*counts)(const Finding&)) {
  Page page(false);
  for (const Finding& finding : findings.take()) {
    if (counts(finding)) {
      putFinding(page, finding);
    }
  }
  return page.text();
}

bool keepsFromReading(const Finding& finding) {
  return finding.kind->severity == Severity::Error ||
         finding.kind->id == FindingId::UnreadableDirectory;
}

bool keepsRunsWaiting(const Finding& finding) {
  const FindingId id = finding.kind->id;
  return id == FindingId::NoTemplateFile ||
         (id == FindingId::UnreadableFragment && !whyNoFile(finding.path).empty());
}

}  // namespace

void putFinding(Page& page, const Finding& finding) {
  const Severity severity = finding.kind->severity;
  page.put(placeOf(finding), Tone::Strong)
      .put(nameOf(severity), kTones.at(static_cast<std::size_t>(severity)))
      .put(": " + finding.sentence + " ")
      .line("[" + std::string(finding.kind->name) + "]", Tone::Faint);
}

std::string refusalText(const Inspection& inspection) {
  Findings findings(inspection.journal);
  checkFiles(inspection, findings);
  return textOf(findings, keepsFromReading);
}

std::string waitText(const Inspection& inspection) {
  Findings findings(inspection.journal);
  checkTemplates(inspection, findings);
  checkSources(inspection, findings);
  return textOf(findings, keepsRunsWaiting);
}

}  // namespace Cradle::Inspect
