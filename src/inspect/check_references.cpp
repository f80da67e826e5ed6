// SPDX-License-Identifier: MIT
// Findings: references that lead nowhere or round in a circle, and text that a run which reads a
// generated configuration takes for something else.

#include "base/text.h"
#include "inspect/findings.h"
#include "inspect/question.h"
#include "inspect/reference_walk.h"
#include "inspect/special_text.h"
#include "inspect/value_facts.h"

namespace Cradle::Inspect {
namespace {

class ReferenceCheck {
 public:
  ReferenceCheck(const Inspection& inspection, Findings& findings)
      : inspection_(inspection), facts_(inspection), findings_(findings) {}

  void run() {
    for (const auto& [group, histories] : inspection_.journal.groups) {
      for (const auto& [key, history] : histories) {
        for (const KeptValue& value : keptValues(history)) {
          // Most values hold no template.
          if (value.part->raw.find('$') != std::string::npos) {
            const std::string name = nameOfKey(group, key);
            checkReferences(name, value);
            checkReadingBack(name, value);
          }
        }
      }
    }
  }

 private:
  const Journal& journal() const { return inspection_.journal; }

  void checkReferences(const std::string& name, const KeptValue& value) {
    if (value.part->value.references().empty()) {
      return;
    }
    const Place place = value.assignment->place;
    for (const Parser::ValueName& target : value.part->value.references()) {
      if (lastValue(journal().find(target.first, target.second)).part == nullptr) {
        findings_.add(FindingId::MissingReference, place,
                      {target.first + "/" + target.second, questionFor(target)});
      }
    }
    const ValueFacts::Facts& facts = facts_.of(*value.part);
    const std::vector<std::string> circle =
        facts.circular ? followReferences(journal(), name, *value.part).circle
                       : std::vector<std::string>();
    if (!circle.empty()) {
      findings_.add(FindingId::ReferenceCircle, place, {name, join(circle, " -> ")});
    } else if (!facts.resolves()) {
      findings_.add(FindingId::ReferenceDepth, place, {name});
    }
  }

  // The key of that group that may have been meant.
  std::string questionFor(const Parser::ValueName& target) const {
    const auto group = journal().groups.find(target.first);
    if (group == journal().groups.end()) {
      return "";
    }
    std::vector<std::string_view> names;
    for (const auto& [key, history] : group->second) {
      names.push_back(key);
    }
    return question(target.second, names);
  }

  void checkReadingBack(const std::string& name, const KeptValue& value) {
    // What is not known yet stands in the text as a template does; it tells nothing.
    const ValueFacts::Facts& facts = facts_.of(*value.part);
    if (!facts.known || !facts.special || !facts.resolves()) {
      return;
    }
    const std::string text = inspection_.textOf(value.part->value);
    forEachEffect(text, [&](std::string_view effect) {
      findings_.add(FindingId::ChangedByReadingBack, value.assignment->place, {name, text, effect});
    });
  }

  const Inspection& inspection_;
  ValueFacts facts_;
  Findings& findings_;
};

}  // namespace

void checkReferences(const Inspection& inspection, Findings& findings) {
  ReferenceCheck(inspection, findings).run();
}

}  // namespace Cradle::Inspect
