// SPDX-License-Identifier: MIT
// Findings: values that are not what their keys are for, and keys that a run cannot do without.

#include <algorithm>

#include "generators/fragments.h"
#include "glob_paths.h"
#include "inspect/findings.h"
#include "inspect/key_table.h"
#include "inspect/output_probe.h"
#include "inspect/value_facts.h"
#include "mount_entry.h"

namespace Cradle::Inspect {
namespace {

using Generators::KeyReference;
using Generators::ValueKind;

std::string expectationOf(const KeyReference& key) {
  return key.words.empty() ? "of the type '" + std::string(key.type) + "'" : wordsOf(key, " or ");
}

// The values that count and whose text is known.
std::vector<KeptValue> valuesToCheck(const KeyReference& key, const History& history,
                                     ValueFacts& facts) {
  std::vector<KeptValue> values = keptValues(history);
  if (takesOne(key)) {
    values.erase(values.begin(), values.end() - 1);
  }
  std::erase_if(values,
                [&](const KeptValue& value) { return !facts.of(*value.part).textIsKnown(); });
  return values;
}

class ValueCheck {
 public:
  ValueCheck(const Inspection& inspection, const KeyReference& key, ValueFacts& facts,
             Findings& findings)
      : inspection_(inspection),
        facts_(facts),
        key_(key),
        name_(std::string(key.name.group) + "/" + std::string(key.name.key)),
        findings_(findings) {}

  void run() {
    const History* const history = inspection_.journal.find(key_.name.group, key_.name.key);
    if (history == nullptr || keptValues(*history).empty()) {
      checkAbsence();
      return;
    }
    for (const KeptValue& value : valuesToCheck(key_, *history, facts_)) {
      const std::string text = inspection_.textOf(value.part->value);
      // Lists leave out what references make empty.
      if (takesOne(key_) || !text.empty()) {
        check(text, value.assignment->place);
      }
    }
  }

 private:
  void checkAbsence() {
    const std::string_view output = endedOutput(inspection_, key_.name);
    if (!output.empty() && !mayStandBehindBadLine()) {
      findings_.add(FindingId::MissingKey, "", 0, {name_, output, expectationOf(key_)});
    }
  }

  bool mayStandBehindBadLine() const {
    const auto& groups = inspection_.journal.groups;
    return std::any_of(groups.begin(), groups.end(), [&](const auto& group) {
      return isRefusedLine(group.first) && group.second.contains(key_.name.key);
    });
  }

  void check(const std::string& text, Place place) {
    switch (key_.kind) {
      case ValueKind::MountList:
        checkMount(text, place);
        break;
      case ValueKind::DeviceList:
        checkDevice(text, place);
        break;
      default:
        checkText(text, place);
    }
  }

  void checkMount(const std::string& text, Place place) {
    const std::string fault = Parser::mountEntryFault(text);
    if (!fault.empty()) {
      const bool hasTab = text.find('\t') != std::string::npos;
      findings_.add(FindingId::MountEntry, place,
                    {fault, hasTab ? "; this one holds a tab, shown as \\t" : ""});
    }
  }

  // Only the list of required devices ends a run.
  void checkDevice(const std::string& text, Place place) {
    const bool isThere = !Parser::globPaths(Generators::devicePath(text)).empty();
    if (!isThere && !endedOutput(inspection_, key_.name).empty()) {
      findings_.add(FindingId::RequiredDevice, place, {text});
    }
  }

  void checkText(const std::string& text, Place place) {
    if (Generators::accepts(key_, text)) {
      return;
    }
    const std::string_view output = endedOutput(inspection_, key_.name);
    if (output.empty()) {
      findings_.add(FindingId::UnfitValue, place, {text, name_, expectationOf(key_)});
    } else {
      findings_.add(FindingId::EndingValue, place, {text, name_, output, expectationOf(key_)});
    }
  }

  const Inspection& inspection_;
  ValueFacts& facts_;
  const KeyReference& key_;
  std::string name_;
  Findings& findings_;
};

}  // namespace

void checkValues(const Inspection& inspection, Findings& findings) {
  ValueFacts facts(inspection);
  for (const KeyReference& key : knownKeys()) {
    ValueCheck(inspection, key, facts, findings).run();
  }
}

}  // namespace Cradle::Inspect
