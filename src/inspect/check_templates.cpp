// SPDX-License-Identifier: MIT
// Findings: templates that cannot be expanded, and those that give nothing.

#include <array>

#include "inspect/findings.h"
#include "inspect/question.h"
#include "template_evaluator.h"

namespace Cradle::Inspect {
namespace {

constexpr std::array<std::string_view, 5> kNames{"HOME", "INSTANCE", "ODM_DIR", "USER", "USER_ID"};

std::string formatQuestion(std::string_view spec) {
  std::vector<std::string_view> names;
  for (const Parser::TemplateFormat& format : Parser::templateFormats()) {
    names.push_back(format.name);
  }
  return question(spec.substr(0, spec.find(':')), names);
}

void checkSubstitution(const Substitution& made, Place place, Findings& findings) {
  switch (made.outcome) {
    case Outcome::NotRun:
      findings.add(FindingId::CommandNotRun, place, {made.spec});
      break;
    case Outcome::NoValue:
      findings.add(FindingId::NoTemplateValue, place, {made.spec});
      break;
    case Outcome::Malformed:
      findings.add(FindingId::MalformedTemplate, place, {made.spec});
      break;
    case Outcome::NoFile:
      findings.add(FindingId::NoTemplateFile, place, {made.spec, made.text});
      break;
    case Outcome::UnknownName:
      findings.add(FindingId::UnknownName, place, {made.spec, question(made.spec, kNames)});
      break;
    case Outcome::UnknownFormat:
      findings.add(FindingId::UnknownFormat, place, {made.spec, formatQuestion(made.spec)});
      break;
    default:
      break;
  }
}

// Whether what a template lacks stands behind a ";".
bool isSplit(const Assignment& assignment, const Part& part) {
  return &part != &assignment.parts.back() && (&part + 1)->raw.find('}') != std::string::npos;
}

void checkPart(const Assignment& assignment, const Part& part, Findings& findings) {
  for (const Substitution& made : part.substitutions) {
    checkSubstitution(made, assignment.place, findings);
  }
  if (part.fate == Fate::StrayDollar) {
    findings.add(FindingId::StrayDollar, assignment.place, {part.raw});
  } else if (part.fate == Fate::Unclosed && isSplit(assignment, part)) {
    findings.add(FindingId::SplitTemplate, assignment.place, {assignment.raw});
  } else if (part.fate == Fate::Unclosed) {
    findings.add(FindingId::UnclosedTemplate, assignment.place, {part.raw});
  }
}

}  // namespace

void checkTemplates(const Inspection& inspection, Findings& findings) {
  for (const auto& [group, histories] : inspection.journal.groups) {
    for (const auto& [key, history] : histories) {
      for (const Assignment& assignment : history) {
        for (const Part& part : assignment.parts) {
          checkPart(assignment, part, findings);
        }
      }
    }
  }
}

}  // namespace Cradle::Inspect
