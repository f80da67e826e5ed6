// SPDX-License-Identifier: MIT
#include "inspect/statement.h"

#include <array>

namespace Cradle::Inspect {
namespace {

State stateOf(const Part& part) {
  if (part.fate == Fate::Kept) {
    return State::Effective;
  }
  return part.fate == Fate::Empty ? State::Empty : State::Discarded;
}

}  // namespace

std::string_view nameOf(State state) {
  constexpr std::array<std::string_view, 6> kNames{"effective", "overridden", "cleared",
                                                   "empty",     "discarded",  "clearing"};
  return kNames.at(static_cast<std::size_t>(state));
}

std::vector<Statement> statementsOf(const History& history, bool takesOne) {
  std::vector<Statement> statements;
  std::size_t ended = 0;  // how many of them count no more
  const auto end = [&](State state, const Assignment& by) {
    for (; ended < statements.size(); ++ended) {
      Statement& statement = statements[ended];
      if (statement.state == State::Effective) {
        statement.state = state;
        statement.by = &by;
      }
    }
  };
  for (const Assignment& assignment : history) {
    if (assignment.clears()) {
      end(State::Cleared, assignment);
      statements.push_back({&assignment, nullptr, State::Clearing});
    }
    for (const Part& part : assignment.parts) {
      const State state = stateOf(part);
      if (takesOne && state == State::Effective) {
        end(State::Overridden, assignment);
      }
      statements.push_back({&assignment, &part, state});
    }
  }
  return statements;
}

}  // namespace Cradle::Inspect
