// SPDX-License-Identifier: MIT
// What has been found: each with its kind, its place and its words.
#pragma once

#include <initializer_list>
#include <string>
#include <vector>

#include "inspect/finding_kinds.h"
#include "inspect/inspection.h"

namespace Cradle::Inspect {

struct Finding {
  const FindingKind* kind;
  std::string path;        // empty where it is about no file
  std::uint32_t line = 0;  // 0 where it is about no line
  std::string sentence;
  std::string advice;
};

class Findings {
 public:
  explicit Findings(const Journal& journal) : journal_(journal) {}

  using Words = std::initializer_list<std::string_view>;

  // The words take the places of the "{}" in the sentence, and the rest of them in the advice.
  void add(FindingId id, std::string path, std::uint32_t line, Words words);
  void add(FindingId id, Place place, Words words);

  // By severity, then by file and line, in the order of a run.
  std::vector<Finding> take();

 private:
  const Journal& journal_;
  std::vector<Finding> findings_;
};

// How many of a severity there are.
std::size_t countOf(const std::vector<Finding>& findings, Severity severity);

// What keeps a run from reading its configuration.
void checkFiles(const Inspection& inspection, Findings& findings);
// Groups and keys that nothing knows, and text that ';' splits against its author's wish.
void checkNames(const Inspection& inspection, Findings& findings);
// Values that are not what their keys are for.
void checkValues(const Inspection& inspection, Findings& findings);
// Templates that cannot be expanded.
void checkTemplates(const Inspection& inspection, Findings& findings);
// References to nothing and in circles, and text that changes when it is read back.
void checkReferences(const Inspection& inspection, Findings& findings);
// Values that later files take away.
void checkLosses(const Inspection& inspection, Findings& findings);
// What fragments hold and, with --run, hooks print.
void checkContributions(const Inspection& inspection, Findings& findings);
// Hooks, fragments and other files; owners and modes; generated files.
void checkSources(const Inspection& inspection, Findings& findings);

}  // namespace Cradle::Inspect
