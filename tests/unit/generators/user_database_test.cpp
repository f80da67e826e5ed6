// SPDX-License-Identifier: MIT
#include "generators/user_database.h"

#include <cerrno>
#include <filesystem>
#include <string>

#include <grp.h>
#include <gtest/gtest.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include "side_effects.h"
#include "support/child_process.h"
#include "support/temporary_directory.h"
#include "support/users.h"

namespace Cradle::Generators {
namespace {

using Testing::inChildProcess;
using Testing::KnownUser;
using Testing::OrdinaryUser;
using Testing::TemporaryDirectory;
using Testing::thisUser;
using Testing::unusedUserId;

// The first user of the database who is neither root nor `but`.
KnownUser ordinaryUser(std::uint32_t but = 0) {
  setpwent();
  const passwd* entry = getpwent();
  while (entry != nullptr && (entry->pw_uid == 0 || entry->pw_uid == but)) {
    entry = getpwent();
  }
  if (entry == nullptr) {
    throw std::runtime_error("there is no such user");
  }
  return {entry->pw_uid, entry->pw_name, entry->pw_dir, entry->pw_gid};
}

// Someone other than root to whom this process may give a directory.
KnownUser owner() {
  return getuid() == 0 ? ordinaryUser() : thisUser();
}

// The status of a path, the path itself when it is a link.
struct stat statusOf(const std::string& path) {
  struct stat status {};
  EXPECT_EQ(lstat(path.c_str(), &status), 0) << path;
  return status;
}

TEST(UserDatabase, MarksTheUnknownUserWithAllOnes) {
  EXPECT_EQ(kUnknownUser, 4294967295U);
}

TEST(UserDatabase, KnowsTheNameTheHomeAndTheGroupOfAUser) {
  const KnownUser known = thisUser();
  const auto user = lookupUser(known.uid);
  ASSERT_TRUE(user.has_value());
  EXPECT_EQ(user->name, known.name);
  EXPECT_EQ(user->home, known.home);
  EXPECT_EQ(user->groupId, known.groupId);
}

TEST(UserDatabase, TellsUsersApart) {
  const KnownUser known = ordinaryUser(getuid());
  const auto user = lookupUser(known.uid);
  ASSERT_TRUE(user.has_value());
  EXPECT_EQ(user->name, known.name);
  EXPECT_EQ(user->home, known.home);
  EXPECT_EQ(user->groupId, known.groupId);
}

// Directories

class UserDirectory : public ::testing::Test {
 protected:
  UserDirectory() : callersMask_(umask(022)) {}
  ~UserDirectory() override { umask(callersMask_); }

  const mode_t callersMask_;
  TemporaryDirectory directory_;
  const std::string path_ = directory_.path("new");
};

TEST_F(UserDirectory, IsMadeWithItsMode) {
  for (const mode_t mode : {0700U, 0750U, 0711U}) {
    std::filesystem::remove(path_);
    EXPECT_TRUE(makeUserDirectory(path_, mode, 0)) << mode;
    EXPECT_EQ(statusOf(path_).st_mode, S_IFDIR | mode);
  }
}

TEST_F(UserDirectory, StaysWithTheCallerWhenItIsForRoot) {
  EXPECT_TRUE(makeUserDirectory(path_, 0700, 0));
  EXPECT_EQ(statusOf(path_).st_uid, geteuid());
}

TEST_F(UserDirectory, BelongsToItsUserAndTheUsersGroup) {
  const KnownUser user = owner();
  EXPECT_TRUE(makeUserDirectory(path_, 0750, user.uid));
  EXPECT_EQ(statusOf(path_).st_mode, S_IFDIR | 0750U);
  EXPECT_EQ(statusOf(path_).st_uid, user.uid);
  EXPECT_EQ(statusOf(path_).st_gid, user.groupId);
}

TEST_F(UserDirectory, IsLeftAsItIsForRootWhenItExists) {
  std::filesystem::create_directory(path_);
  std::filesystem::permissions(path_, std::filesystem::perms(0705));
  const struct stat before = statusOf(path_);
  EXPECT_TRUE(makeUserDirectory(path_, 0700, 0));
  EXPECT_EQ(statusOf(path_).st_mode, before.st_mode);
  EXPECT_EQ(statusOf(path_).st_uid, before.st_uid);
  EXPECT_EQ(statusOf(path_).st_gid, before.st_gid);
}

TEST_F(UserDirectory, MayBeAFileForRootThatIsLeftAlone) {
  directory_.write("new", "as it was");
  const struct stat before = statusOf(path_);
  EXPECT_TRUE(makeUserDirectory(path_, 0700, 0));
  EXPECT_EQ(statusOf(path_).st_mode, before.st_mode);
  EXPECT_EQ(directory_.read("new"), "as it was");
}

TEST_F(UserDirectory, GetsANewOwnerButKeepsItsModeWhenItExists) {
  const KnownUser user = owner();
  std::filesystem::create_directory(path_);
  std::filesystem::permissions(path_, std::filesystem::perms(0705));
  EXPECT_TRUE(makeUserDirectory(path_, 0700, user.uid));
  EXPECT_EQ(statusOf(path_).st_mode, S_IFDIR | 0705U);
  EXPECT_EQ(statusOf(path_).st_uid, user.uid);
}

TEST_F(UserDirectory, MayBeALinkWhoseTargetIsLeftAlone) {
  const KnownUser user = owner();
  const std::string target = directory_.write("target/file", "");
  std::filesystem::create_symlink(target, path_);
  const struct stat before = statusOf(target);
  EXPECT_TRUE(makeUserDirectory(path_, 0700, user.uid));
  EXPECT_EQ(statusOf(path_).st_uid, user.uid);
  EXPECT_EQ(statusOf(path_).st_gid, user.groupId);
  EXPECT_EQ(statusOf(target).st_uid, before.st_uid);
}

TEST_F(UserDirectory, StaysWithItsOwnerForRootWhenItExists) {
  std::filesystem::create_directory(path_);
  const KnownUser other = owner();
  EXPECT_EQ(chown(path_.c_str(), other.uid, other.groupId), 0);
  EXPECT_TRUE(makeUserDirectory(path_, 0700, 0));
  EXPECT_EQ(statusOf(path_).st_uid, other.uid);
}

// Directories that are not to be made: the answer is what making them would give.
class RefusedDirectory : public UserDirectory {
 protected:
  RefusedDirectory() {
    Parser::refuseSideEffects([](const std::string& /*what*/) {});
  }
  ~RefusedDirectory() override {
    Parser::refuseSideEffects(nullptr);
    chmod(directory_.path().c_str(), 0700);
  }

  // Whether a user other than root would make it in a directory of that mode and of his own.
  bool wouldMakeIn(mode_t mode) const {
    if (geteuid() == 0) {
      EXPECT_EQ(chown(directory_.path().c_str(), OrdinaryUser::kDaemon, 0), 0);
    }
    EXPECT_EQ(chmod(directory_.path().c_str(), mode), 0);
    const OrdinaryUser user;
    return makeUserDirectory(path_, 0700, 0);
  }
};

TEST_F(RefusedDirectory, WouldBeMadeInADirectoryThatMayBeWrittenAndSearched) {
  EXPECT_TRUE(wouldMakeIn(0700));
  EXPECT_FALSE(wouldMakeIn(0500));
  EXPECT_FALSE(wouldMakeIn(0600));
  EXPECT_FALSE(std::filesystem::exists(path_));
  EXPECT_FALSE(makeUserDirectory(directory_.path("no/new"), 0700, 0));
  EXPECT_FALSE(makeUserDirectory(directory_.writeScript("tool", "") + "/new", 0700, 0));
  EXPECT_EQ(makeUserDirectory("/no such thing", 0700, 0), access("/", W_OK) == 0);
}

TEST_F(RefusedDirectory, IsThereWhenItExists) {
  std::filesystem::create_directory(path_);
  EXPECT_TRUE(wouldMakeIn(0500));
}

TEST_F(RefusedDirectory, WouldBeMadeForKnownUsersAlone) {
  EXPECT_TRUE(makeUserDirectory(path_, 0700, thisUser().uid));
  EXPECT_FALSE(makeUserDirectory(path_, 0700, unusedUserId()));
}

// Failures

TEST(UserDatabase, HasNobodyForAnUnusedId) {
  const std::uint32_t uid = unusedUserId();
  errno = 0;
  ASSERT_EQ(getpwuid(uid), nullptr);
  const int reason = errno;
  errno = EBADF;
  EXPECT_FALSE(lookupUser(uid).has_value());
  EXPECT_EQ(errno, reason);
}

TEST(UserDatabase, HasNobodyForTheUnknownUser) {
  EXPECT_FALSE(lookupUser(kUnknownUser).has_value());
}

TEST_F(UserDirectory, IsNotMadeWithoutItsParent) {
  errno = 0;
  EXPECT_FALSE(makeUserDirectory(directory_.path("no/new"), 0700, 0));
  EXPECT_EQ(errno, ENOENT);
  EXPECT_FALSE(makeUserDirectory(directory_.path("no/new"), 0700, owner().uid));
}

TEST_F(UserDirectory, IsNotMadeForAnUnknownUser) {
  EXPECT_FALSE(makeUserDirectory(path_, 0700, unusedUserId()));
  EXPECT_FALSE(std::filesystem::exists(path_));
}

TEST_F(UserDirectory, FailsWhenItMayNotBeGivenAway) {
  const KnownUser maker = owner();
  const KnownUser other = ordinaryUser(maker.uid);
  std::filesystem::permissions(directory_.path(), std::filesystem::perms(0777));
  const std::string made = inChildProcess([&] {
    if (getuid() == 0 && (setgroups(0, nullptr) != 0 || setuid(maker.uid) != 0)) {
      return "still root";
    }
    return makeUserDirectory(path_, 0700, other.uid) ? "made" : std::strerror(errno);
  });
  EXPECT_EQ(made, "Operation not permitted");
}

}  // namespace
}  // namespace Cradle::Generators
