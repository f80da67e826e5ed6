// SPDX-License-Identifier: MIT
#include "generators/user_database.h"

#include <cerrno>

#include <fcntl.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include "base/uninterrupted.h"
#include "side_effects.h"

namespace Cradle::Generators {
namespace {

bool makeDirectory(const std::string& path, mode_t mode) {
  return mkdir(path.c_str(), mode) == 0 || errno == EEXIST;
}

// Whether makeDirectory() would succeed.
bool wouldMakeDirectory(const std::string& path) {
  struct stat status {};
  const std::string parent = path.substr(0, path.rfind('/') + 1);
  return lstat(path.c_str(), &status) == 0 ||
         faccessat(AT_FDCWD, parent.c_str(), W_OK | X_OK, AT_EACCESS) == 0;
}

}  // namespace

std::optional<User> lookupUser(std::uint32_t uid) {
  const passwd* const entry = uninterrupted([&] {
    errno = 0;
    return getpwuid(uid);
  });
  if (entry == nullptr) {
    return std::nullopt;
  }
  return User{entry->pw_name, entry->pw_dir, entry->pw_gid};
}

bool makeUserDirectory(const std::string& path, mode_t mode, std::uint32_t uid) {
  if (Parser::isDirectoryRefused(path)) {
    return (uid == 0 || lookupUser(uid)) && wouldMakeDirectory(path);
  }
  if (uid == 0) {
    return makeDirectory(path, mode);
  }
  const std::optional<User> owner = lookupUser(uid);
  return owner && makeDirectory(path, mode) && lchown(path.c_str(), uid, owner->groupId) == 0;
}

}  // namespace Cradle::Generators
