// SPDX-License-Identifier: MIT
#include "inspect/value_facts.h"

#include <algorithm>

#include "inspect/reference_walk.h"

namespace Cradle::Inspect {
namespace {

constexpr std::string_view kSpecialCharacters = ";$\n";

bool namesUser(const Part& part) {
  return std::any_of(part.substitutions.begin(), part.substitutions.end(),
                     [](const Substitution& made) { return isUserName(made.spec); });
}

bool holdsSpecial(const std::string& text) {
  return text.find_first_of(kSpecialCharacters) != text.npos;
}

// A plain text between the references, and what the templates gave.
bool holdsSpecial(const Part& part) {
  return part.raw.find("$$") != part.raw.npos ||
         std::any_of(part.substitutions.begin(), part.substitutions.end(),
                     [](const Substitution& made) { return holdsSpecial(made.text); });
}

}  // namespace

bool ValueFacts::Facts::resolves() const {
  return !circular && values <= kMostValues;
}

const ValueFacts::Facts& ValueFacts::of(const Part& part) {
  if (!entries_.contains(&part)) {
    enter(part);
    while (!path_.empty()) {
      advance();
    }
  }
  return entries_.find(&part)->second.facts;
}

ValueFacts::Facts ValueFacts::ownFacts(const Part& part) const {
  Facts facts;
  facts.known = !part.awaitsCommand() && (inspection_.userIsKnown || !namesUser(part));
  facts.special = holdsSpecial(part);
  return facts;
}

void ValueFacts::enter(const Part& part) {
  entries_.emplace(&part, Entry{ownFacts(part)});
  path_.push_back({&part});
}

// Takes the next step of the innermost value: into what it refers to, over what is finished, or
// out.
void ValueFacts::advance() {
  Stage& stage = path_.back();
  const auto& references = stage.part->value.references();
  if (stage.next == references.size()) {
    entries_.find(stage.part)->second.finished = true;
    path_.pop_back();
    return;
  }
  const auto& [group, key] = references[stage.next];
  const Part* const target = lastValue(inspection_.journal.find(group, key)).part;
  if (target != nullptr && !entries_.contains(target)) {
    enter(*target);
    return;
  }
  ++stage.next;
  if (target == nullptr) {
    return;
  }
  Facts& facts = entries_.find(stage.part)->second.facts;
  const auto& [others, finished] = entries_.find(target)->second;
  facts.values = std::min(facts.values + others.values, kMostValues + 1);
  facts.circular = facts.circular || others.circular || !finished;
  facts.known = facts.known && others.known;
  facts.special = facts.special || others.special;
}

}  // namespace Cradle::Inspect
