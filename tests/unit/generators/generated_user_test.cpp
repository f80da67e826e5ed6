// SPDX-License-Identifier: MIT
#include "generators/generated_user.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "generators/login_library.h"
#include "generators/user_database.h"
#include "support/child_process.h"
#include "support/dconf_database.h"
#include "support/log_capture.h"
#include "support/temporary_directory.h"
#include "support/users.h"

namespace Cradle::Generators {
namespace {

using Testing::DconfDatabase;
using Testing::inChildWithoutDescriptors;
using Testing::KnownUser;
using Testing::LogCapture;
using Testing::reasonForNoUser;
using Testing::TemporaryDirectory;
using Testing::thisUser;
using Testing::unusedUserId;

std::string shown(const RunFacts& facts) {
  return std::to_string(facts.userId) + "|" + facts.user + "|" + facts.home + "|" + facts.instance +
         "|" + std::to_string(facts.baseUid);
}

// What the command line says; the user is the one who runs the test.
RunFacts given() {
  return {thisUser().uid, "", "", "given", 7};
}

// The same when the user has been looked up.
std::string lookedUp() {
  const KnownUser user = thisUser();
  return shown({user.uid, user.name, user.home, "given", 7});
}

class GeneratedUserTest : public ::testing::Test {
 protected:
  // The facts after a resolution with one directory, which must end with `result`.
  std::string resolved(GeneratedUser result, RunFacts facts = given()) {
    return resolvedIn({directory_.path("d")}, result, std::move(facts));
  }

  std::string resolvedIn(const std::vector<std::string>& directories, GeneratedUser result,
                         RunFacts facts = given()) {
    const LogCapture log;
    EXPECT_EQ(resolveGeneratedUser(directories, facts), result);
    log_ = log.text();
    return shown(facts);
  }

  void store(const std::string& lines, const std::string& file = "d/x.conf") const {
    directory_.write(file, "[GeneratedConfig]\n" + lines);
  }

  TemporaryDirectory directory_;
  std::string log_;
};

constexpr const char* kAllFacts =
    "UserId=42\nUser=stored\nHome=/stored\nInstance=inst\nBaseUid=9\n";

TEST(GeneratedUserResults, HaveTheirNumbers) {
  EXPECT_EQ(static_cast<int>(GeneratedUser::Found), 1);
  EXPECT_EQ(static_cast<int>(GeneratedUser::Resolved), 0);
  EXPECT_EQ(static_cast<int>(GeneratedUser::Failed), -1);
}

// Stored facts

TEST_F(GeneratedUserTest, TakesAllFactsFromAGeneratedConfiguration) {
  store(kAllFacts);
  EXPECT_EQ(resolved(GeneratedUser::Found), "42|stored|/stored|inst|9");
  EXPECT_EQ(log_, "");
}

TEST_F(GeneratedUserTest, NeedsNeitherASeatNorADatabaseForStoredFacts) {
  store(kAllFacts);
  EXPECT_EQ(resolved(GeneratedUser::Found, {kUnknownUser, "", "", "", 0}),
            "42|stored|/stored|inst|9");
  EXPECT_EQ(resolved(GeneratedUser::Found, {unusedUserId(), "", "", "", 0}),
            "42|stored|/stored|inst|9");
  EXPECT_EQ(log_, "");
}

TEST_F(GeneratedUserTest, KeepsTheGivenInstanceWithoutAStoredOne) {
  store("UserId=42\nUser=stored\nHome=/stored\nBaseUid=9\n");
  EXPECT_EQ(resolved(GeneratedUser::Found), "42|stored|/stored|given|9");
}

TEST_F(GeneratedUserTest, ReadsEveryIdThatARunCanStore) {
  store("UserId=4294967294\nUser=stored\nHome=/stored\nBaseUid=2147483648\n");
  EXPECT_EQ(resolved(GeneratedUser::Found), "4294967294|stored|/stored|given|2147483648");
}

struct StoredId {
  const char* text;
  const char* id;
};

constexpr StoredId kStoredIds[] = {
    {"x", "0"},           {"12x", "12"},
    {"0x10", "16"},       {"4294967295", "4294967295"},  // the unknown user, who is not looked for
    {"-1", "4294967295"}, {"4294967338", "42"},          // 2^32 + 42
};

TEST_F(GeneratedUserTest, TakesTheLower32BitsOfWhateverNumberIsStored) {
  for (const StoredId& row : kStoredIds) {
    store(kAllFacts + std::string("UserId=") + row.text + "\n");
    EXPECT_EQ(resolved(GeneratedUser::Found), std::string(row.id) + "|stored|/stored|inst|9")
        << row.text;
    EXPECT_EQ(log_, "") << row.text;
  }
}

TEST_F(GeneratedUserTest, TakesTheLastStoredValueOfEachFact) {
  store(kAllFacts);
  store("UserId=43\n", "d/y.conf");
  store("Home=/other\n", "e/x.conf");
  EXPECT_EQ(resolvedIn({directory_.path("d"), directory_.path("missing"), directory_.path("e")},
                       GeneratedUser::Found),
            "43|stored|/other|inst|9");
}

TEST_F(GeneratedUserTest, LetsALaterEmptyValueReplaceAStoredOne) {
  store(kAllFacts + std::string("User=${system:true}\n"));
  EXPECT_EQ(resolved(GeneratedUser::Found), "42||/stored|inst|9");
}

TEST_F(GeneratedUserTest, IgnoresAllOtherKeysInSilence) {
  directory_.write("d/a.conf", "[Config]\nUserId=1\nOther=${nonsense}\n");
  store(std::string("DefaultLxc=a;b\nPropertyPre=$x\n") + kAllFacts);
  EXPECT_EQ(resolved(GeneratedUser::Found), "42|stored|/stored|inst|9");
  EXPECT_EQ(log_, "");
}

// No stored facts

TEST_F(GeneratedUserTest, LooksTheGivenUserUpWithoutAnyConfiguration) {
  EXPECT_EQ(resolved(GeneratedUser::Resolved), lookedUp());
  EXPECT_EQ(resolvedIn({}, GeneratedUser::Resolved), lookedUp());
  EXPECT_EQ(log_, "");
}

TEST_F(GeneratedUserTest, LooksTheGivenUserUpWhereAFactIsMissing) {
  for (const char* const lines : {
           "User=stored\nHome=/stored\nInstance=inst\nBaseUid=9\n",
           "UserId=42\nHome=/stored\nInstance=inst\nBaseUid=9\n",
           "UserId=42\nUser=stored\nInstance=inst\nBaseUid=9\n",
           "UserId=42\nUser=stored\nHome=/stored\nInstance=inst\n",
           "UserId=42\nUser=stored\nHome=/stored\nBaseUid=9\nUserId=\n",
           "",
       }) {
    store(lines);
    EXPECT_EQ(resolved(GeneratedUser::Resolved), lookedUp()) << lines;
    EXPECT_EQ(log_, "") << lines;
  }
}

TEST_F(GeneratedUserTest, DoesNotReadAFactFromTheDconfDatabaseOfTheCaller) {
  const DconfDatabase database("[cradle-test]\nhome='/stored'\n");
  store("UserId=42\nUser=stored\nHome=${dconf:/cradle-test/home}\nBaseUid=9\n");
  const auto facts = [this] { return resolved(GeneratedUser::Resolved); };
  EXPECT_EQ(database.visibleTo(facts), lookedUp());
}

TEST(ResolvedUser, FillsInTheNameAndTheHomeAndNothingElse) {
  RunFacts facts{thisUser().uid, "old", "old", "given", 7};
  EXPECT_EQ(resolveUser(facts), GeneratedUser::Resolved);
  EXPECT_EQ(shown(facts), lookedUp());
}

// Failures

TEST(ResolvedUser, TellsWhyThereIsNoSuchUser) {
  const std::uint32_t uid = unusedUserId();
  const std::string reason = reasonForNoUser(uid);
  const LogCapture log;
  RunFacts facts{uid, "old", "old", "given", 7};
  EXPECT_EQ(resolveUser(facts), GeneratedUser::Failed);
  EXPECT_EQ(shown(facts), std::to_string(uid) + "|old|old|given|7");
  EXPECT_EQ(log.text(), "ERROR: Failed to get user information for uid " + std::to_string(uid) +
                            ": " + reason + "\n");
}

TEST_F(GeneratedUserTest, FailsForAUserWhoDoesNotExist) {
  const std::uint32_t uid = unusedUserId();
  const std::string reason = reasonForNoUser(uid);
  resolved(GeneratedUser::Failed, {uid, "", "", "given", 7});
  EXPECT_EQ(log_, "ERROR: Failed to get user information for uid " + std::to_string(uid) + ": " +
                      reason + "\n");
}

TEST_F(GeneratedUserTest, FailsOnAnInvalidConfigurationThoughAllFactsAreStored) {
  store(kAllFacts + std::string("no entry\n"));
  EXPECT_EQ(resolved(GeneratedUser::Failed), shown(given()));
  const std::string file = directory_.path("d/x.conf");
  EXPECT_TRUE(log_.ends_with("ERROR: Failed to load config from '" + file +
                             "'\nERROR: Invalid configuration in " + file + "\n"))
      << log_;
}

TEST_F(GeneratedUserTest, TellsWhyTheSeatHasNoUser) {
  loginLibrary();
  const std::vector<std::string> directories{directory_.path("d")};
  const std::string told = inChildWithoutDescriptors([&] {
    const LogCapture log;
    RunFacts facts{kUnknownUser, "", "", "given", 7};
    EXPECT_EQ(resolveGeneratedUser(directories, facts), GeneratedUser::Failed);
    return log.text();
  });
  EXPECT_EQ(told,
            "WARNING: Could not get sessions for seat0\n"
            "WARNING: Could not create login monitor\n"
            "ERROR: Failed to get seat0 user: Too many open files\n");
}

}  // namespace
}  // namespace Cradle::Generators
