// SPDX-License-Identifier: MIT
// The facts of one run: for whom and for which container instance it writes.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "config_parser.h"

namespace Cradle::Generators {

struct RunFacts {
  std::uint32_t userId = 0;
  std::string user = {};
  std::string home = {};
  std::string instance = {};
  std::uint32_t baseUid = 0;
};

// What every hook script is given, in this order: user id, user name, home directory, instance name
// and base uid, the numbers in decimal.
std::vector<std::string> hookArguments(const RunFacts& facts);

// Registers the templates "HOME", "INSTANCE", "USER" and "USER_ID", and "ODM_DIR" where it is
// wanted.
void addNamedTemplates(Parser::ConfigParser& parser, const RunFacts& facts, bool withOdmDirectory);

}  // namespace Cradle::Generators
