// SPDX-License-Identifier: MIT
#include "generators/generated_user.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <optional>

#include "generators/generated_group.h"
#include "generators/seat_user.h"
#include "generators/user_database.h"
#include "library_logger.h"

namespace Cradle::Generators {
namespace {

using Parser::ConfigParser;
using Parser::libraryLogger;
using Parser::LoadResult;

// The stored facts hold no templates, so it does not matter whose dconf database those would read.
constexpr std::int32_t kTemplateUser = 0;

// Every fact but the instance, which the command line always has.
constexpr std::array kRequiredFacts{GeneratedGroup::kUserId, GeneratedGroup::kUser,
                                    GeneratedGroup::kHome, GeneratedGroup::kBaseUid};

bool hasFacts(const ConfigParser& parser) {
  return std::all_of(kRequiredFacts.begin(), kRequiredFacts.end(), [&](std::string_view key) {
    return parser.hasKey(GeneratedGroup::kName, key);
  });
}

// Read as 64 bits, because ids of 2^31 and above are written as unsigned numbers.
std::uint32_t readId(const ConfigParser& parser, std::string_view key) {
  long value = 0;
  parser.getValue(GeneratedGroup::kName, key, value);
  return static_cast<std::uint32_t>(value);
}

void readFacts(const ConfigParser& parser, RunFacts& facts) {
  facts.userId = readId(parser, GeneratedGroup::kUserId);
  facts.baseUid = readId(parser, GeneratedGroup::kBaseUid);
  parser.getValue(GeneratedGroup::kName, GeneratedGroup::kUser, facts.user);
  parser.getValue(GeneratedGroup::kName, GeneratedGroup::kHome, facts.home);
  if (parser.hasKey(GeneratedGroup::kName, GeneratedGroup::kInstance)) {
    parser.getValue(GeneratedGroup::kName, GeneratedGroup::kInstance, facts.instance);
  }
}

GeneratedUser lookUp(RunFacts& facts) {
  std::optional<User> user = lookupUser(facts.userId);
  if (!user) {
    libraryLogger().error() << "Failed to get user information for uid " << facts.userId << ": "
                            << std::strerror(errno);
    return GeneratedUser::Failed;
  }
  facts.user = std::move(user->name);
  facts.home = std::move(user->home);
  return GeneratedUser::Resolved;
}

// Whether the user id is known, the user at the machine being waited for if need be.
bool detect(RunFacts& facts, std::int32_t patience) {
  if (facts.userId == kUnknownUser) {
    facts.userId = waitForActiveSeatUser(patience);
  }
  return facts.userId != kUnknownUser;
}

}  // namespace

GeneratedUser resolveUser(RunFacts& facts, std::int32_t patience) {
  if (!detect(facts, patience)) {
    libraryLogger().error() << "User id must be defined!";
    return GeneratedUser::Failed;
  }
  return lookUp(facts);
}

GeneratedUser resolveGeneratedUser(const std::vector<std::string>& directories, RunFacts& facts,
                                   std::int32_t patience) {
  ConfigParser parser(kTemplateUser);
  for (const std::string_view key : GeneratedGroup::kFacts) {
    parser.addKnownKey(GeneratedGroup::kName, key, Parser::SingleValue);
  }
  if (parser.loadDirectories(directories) == LoadResult::InvalidConfiguration) {
    return GeneratedUser::Failed;
  }
  if (hasFacts(parser)) {
    readFacts(parser, facts);
    return GeneratedUser::Found;
  }
  if (!detect(facts, patience)) {
    libraryLogger().error() << "Failed to get seat0 user: " << std::strerror(errno);
    return GeneratedUser::Failed;
  }
  return lookUp(facts);
}

}  // namespace Cradle::Generators
