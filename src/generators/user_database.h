// SPDX-License-Identifier: MIT
// Users as the system's user database knows them, and directories made on their behalf.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include <sys/types.h>

namespace Cradle::Generators {

// The user id that stands for "not known".
inline constexpr std::uint32_t kUnknownUser = static_cast<std::uint32_t>(-1);

struct User {
  std::string name = {};
  std::string home = {};
  std::uint32_t groupId = 0;  // the primary group
};

// The user of that id (getpwuid), or nothing; errno then tells why, 0 where there is no such user.
std::optional<User> lookupUser(std::uint32_t uid);

// Makes the directory `path` with `mode` (mkdir); one that exists is accepted as it is. For a `uid`
// other than 0 the user and the user's primary group become its owners (lchown), which an unknown
// user and a failing change of owner prevent. False on failure, with errno set. One that is refused
// (see side_effects.h) counts as made.
bool makeUserDirectory(const std::string& path, mode_t mode, std::uint32_t uid);

}  // namespace Cradle::Generators
