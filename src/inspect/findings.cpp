// SPDX-License-Identifier: MIT
#include "inspect/findings.h"

#include <algorithm>
#include <utility>

namespace Cradle::Inspect {
namespace {

constexpr std::string_view kPlaceholder = "{}";

using Word = Findings::Words::const_iterator;

// Fills in the words from `next` on.
std::string filled(std::string_view sentence, Word& next) {
  std::string text;
  for (;;) {
    const std::size_t place = sentence.find(kPlaceholder);
    text += sentence.substr(0, place);
    if (place == sentence.npos) {
      return text;
    }
    text += *next;
    ++next;
    sentence.remove_prefix(place + kPlaceholder.size());
  }
}

}  // namespace

void Findings::add(FindingId id, std::string path, std::uint32_t line, Words words) {
  const FindingKind& kind = kindOf(id);
  Word next = words.begin();
  std::string sentence = filled(kind.sentence, next);
  std::string advice = filled(kind.advice, next);
  findings_.push_back({&kind, std::move(path), line, std::move(sentence), std::move(advice)});
}

void Findings::add(FindingId id, Place place, Words words) {
  add(id, journal_.files[place.file].path, place.line, words);
}

std::vector<Finding> Findings::take() {
  const auto rank = [](const Finding& finding) {
    return std::tuple(finding.kind->severity, std::string_view(finding.path), finding.line);
  };
  std::stable_sort(
      findings_.begin(), findings_.end(),
      [&](const Finding& left, const Finding& right) { return rank(left) < rank(right); });
  return std::move(findings_);
}

std::size_t countOf(const std::vector<Finding>& findings, Severity severity) {
  return static_cast<std::size_t>(
      std::count_if(findings.begin(), findings.end(),
                    [&](const Finding& finding) { return finding.kind->severity == severity; }));
}

}  // namespace Cradle::Inspect
