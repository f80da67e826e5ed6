// SPDX-License-Identifier: MIT
// What the references of values lead to, found once for each value however many others refer to it.
#pragma once

#include <cstddef>
#include <unordered_map>
#include <vector>

#include "inspect/inspection.h"

namespace Cradle::Inspect {

class ValueFacts {
 public:
  struct Facts {
    // That are needed for it, itself included; one more than allowed at most.
    std::size_t values = 1;
    bool circular = false;  // it leads into a circle
    bool known = true;      // no text that is needed awaits a command or the user
    bool special = false;   // it may hold what has a meaning in a configuration file

    // Whether a run resolves it; the text is empty otherwise.
    bool resolves() const;

    // Whether the text is what it will be in a run.
    bool textIsKnown() const { return known || !resolves(); }
  };

  explicit ValueFacts(const Inspection& inspection) : inspection_(inspection) {}

  const Facts& of(const Part& part);

 private:
  // A value whose references are being followed.
  struct Stage {
    const Part* part;
    std::size_t next = 0;  // of its references
  };

  struct Entry {
    Facts facts;
    bool finished = false;
  };

  Facts ownFacts(const Part& part) const;
  void enter(const Part& part);
  void advance();

  const Inspection& inspection_;
  std::unordered_map<const Part*, Entry> entries_;
  std::vector<Stage> path_;  // not the call stack: chains may be long
};

}  // namespace Cradle::Inspect
