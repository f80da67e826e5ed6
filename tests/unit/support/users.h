// SPDX-License-Identifier: MIT
// Users of the machine that the tests run on.
#pragma once

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <string>

#include <gtest/gtest.h>
#include <pwd.h>
#include <sys/types.h>
#include <unistd.h>

namespace Cradle::Testing {

struct KnownUser {
  std::uint32_t uid;
  std::string name;
  std::string home;
  std::uint32_t groupId;
};

// The user who runs the tests.
inline KnownUser thisUser() {
  const passwd* const entry = getpwuid(getuid());
  if (entry == nullptr) {
    throw std::runtime_error("the user who runs the tests is not in the user database");
  }
  return {entry->pw_uid, entry->pw_name, entry->pw_dir, entry->pw_gid};
}

// An id that nobody has.
inline std::uint32_t unusedUserId() {
  std::uint32_t uid = 2'147'483'646;
  while (getpwuid(uid) != nullptr) {
    --uid;
  }
  return uid;
}

// The system's text for the reason why there is no such user.
inline std::string reasonForNoUser(std::uint32_t uid) {
  errno = 0;
  getpwuid(uid);
  return std::strerror(errno);
}

// Lets another user than root look at the files while it lives.
class OrdinaryUser {
 public:
  static constexpr uid_t kDaemon = 1;

  OrdinaryUser() : isRoot_(geteuid() == 0) { become(kDaemon); }
  ~OrdinaryUser() { become(0); }
  OrdinaryUser(const OrdinaryUser&) = delete;
  OrdinaryUser& operator=(const OrdinaryUser&) = delete;

 private:
  void become(uid_t user) const { EXPECT_EQ(isRoot_ ? seteuid(user) : 0, 0); }

  bool isRoot_;
};

}  // namespace Cradle::Testing
