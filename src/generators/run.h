// SPDX-License-Identifier: MIT
// How the three generators get ready, written once, and where they differ.
//
// A run knows for whom it writes, holds the loaded configuration and the arguments of its hooks.
// The run owns its parser; the directories belong to the command line and outlive it.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "config_parser.h"
#include "generators/run_facts.h"
#include "generators/seat_user.h"

namespace Cradle::Generators {

// One kind of output.
struct RunKind {
  // Takes the facts from a generated configuration where there is one. Its values are plain then,
  // and what hooks contributed is part of it: no named template is defined and hooks get no
  // arguments.
  bool readsGenerated;
  // Defines the template "ODM_DIR".
  bool definesOdmDirectory;
};

inline constexpr RunKind kConfigRun{.readsGenerated = false, .definesOdmDirectory = true};
inline constexpr RunKind kLxcRun{.readsGenerated = true, .definesOdmDirectory = true};
inline constexpr RunKind kPropertyRun{.readsGenerated = true, .definesOdmDirectory = false};

struct Run {
  explicit Run(std::uint32_t templateUser) : parser(static_cast<std::int32_t>(templateUser)) {}

  Parser::ConfigParser parser;
  RunFacts facts;
  bool fromGenerated = false;              // the facts come from a generated configuration
  std::vector<std::string> hookArguments;  // empty when they do
};

// Settles for whom a run is, and defines its named templates. Null, with an error logged, where
// nobody is known. `given` holds the user id (kUnknownUser for detection), instance and base uid of
// the command line; a user is waited for as long as `patience` says (see seat_user.h).
std::unique_ptr<Run> settleRun(const RunKind& kind, const std::vector<std::string>& directories,
                               const RunFacts& given, std::int32_t patience = kSeatUserTimeout);

// The same, with the directories loaded. Null, with an error logged, also where these are no valid
// configuration.
std::unique_ptr<Run> prepareRun(const RunKind& kind, const std::vector<std::string>& directories,
                                const RunFacts& given);

}  // namespace Cradle::Generators
