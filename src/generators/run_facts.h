// The facts of one run: for whom and for which container instance it writes.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "config_parser.h"

namespace Cradle::Generators {

struct RunFacts {
  std::uint32_t userId = 0;
  std::string user;
  std::string home;
  std::string instance;
  std::uint32_t baseUid = 0;
};

// What every hook script is given, in this order: user id, user name, home directory, instance name
// and base uid, the numbers in decimal.
std::vector<std::string> hookArguments(const RunFacts& facts);

// Registers the templates "HOME", "INSTANCE", "ODM_DIR", "USER" and "USER_ID".
void addNamedTemplates(Parser::ConfigParser& parser, const RunFacts& facts);

// Loads the directories. False when nothing was there to load, which is logged, or a file was
// invalid, which the parser has logged.
bool loadConfiguration(Parser::ConfigParser& parser, const std::vector<std::string>& directories);

}  // namespace Cradle::Generators
