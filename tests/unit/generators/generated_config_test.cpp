// SPDX-License-Identifier: MIT
#include "generators/generated_config.h"

#include <filesystem>
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

// Runs for the user who runs the test, with the configuration directories "c" and, when it has
// anything in it, "d".
class GeneratedConfig : public ::testing::Test {
 protected:
  void conf(const std::string& text) const { directory_.write("c/10-base.conf", text); }

  std::vector<std::string> directories() const {
    std::vector<std::string> all{directory_.path("c")};
    if (std::filesystem::exists(directory_.path("d"))) {
      all.push_back(directory_.path("d"));
    }
    return all;
  }

  // The written file of a run that must succeed.
  std::string generated() {
    EXPECT_EQ(status(user_.uid), 0);
    return directory_.read("out");
  }

  // The exit status of a run.
  int status(std::uint32_t userId) {
    const LogCapture log;
    const int result = generateConfig(directory_.path("out"), directories(), userId, "inst", 7);
    log_ = log.text();
    return result;
  }

  // The whole text of a file with these groups and contributed lines.
  std::string file(const std::string& groups, const std::string& contributed = "") const {
    return "# This is an automatically generated file, do not edit\n" + groups +
           "\n[GeneratedConfig]\n" + contributed + "UserId=" + std::to_string(user_.uid) +
           "\nUser=" + user_.name + "\nHome=" + user_.home + "\nInstance=inst\nBaseUid=7\n";
  }

  void expectFailure(std::uint32_t userId, const std::string& log) {
    directory_.write("out", "as it was");
    EXPECT_EQ(status(userId), 1);
    EXPECT_EQ(log_, log);
    EXPECT_EQ(directory_.read("out"), "as it was");
    std::filesystem::remove(directory_.path("out"));
    EXPECT_EQ(status(userId), 1);
    EXPECT_FALSE(std::filesystem::exists(directory_.path("out")));
  }

  const KnownUser user_ = thisUser();
  TemporaryDirectory directory_;
  std::string log_;
};

TEST_F(GeneratedConfig, HoldsAHeadTheGroupsAndTheFacts) {
  conf("[Config]\nKey=value\n");
  EXPECT_EQ(generated(), file("\n[Config]\nKey=value\n"));
  EXPECT_EQ(log_, "");
}

TEST_F(GeneratedConfig, WritesGroupsAndTheirKeysInByteOrder) {
  conf("[b]\nB=1\na=2\nA=3\n[Z]\nKey=4\n[a]\nKey=5\n[b]\n0=6\n");
  EXPECT_EQ(generated(), file("\n[Z]\nKey=4\n"
                              "\n[a]\nKey=5\n"
                              "\n[b]\n0=6\nA=3\nB=1\na=2\n"));
}

TEST_F(GeneratedConfig, MergesTheDirectoriesInTheirOrder) {
  conf("[G]\nList=a\nGone=x\nCleared=y\n");
  directory_.write("d/10-base.conf", "[G]\nList=b;c\nGone=\nCleared=\nCleared=z\n[H]\nKey=1\n");
  EXPECT_EQ(generated(), file("\n[G]\nCleared=z\nList=a;b;c\n\n[H]\nKey=1\n"));
}

TEST_F(GeneratedConfig, JoinsAllValuesOfAKeyTheEmptyOnesIncluded) {
  conf("[G]\nKey=a;${config:No/Such};c\n");
  EXPECT_EQ(generated(), file("\n[G]\nKey=a;;c\n"));
}

TEST_F(GeneratedConfig, HoldsNeitherTemplatesNorReferences) {
  conf("[G]\nA=<${config:G/B}>\nB=${USER_ID}$$\n");
  const std::string text = std::to_string(user_.uid) + "$";
  EXPECT_EQ(generated(), file("\n[G]\nA=<" + text + ">\nB=" + text + "\n"));
}

TEST_F(GeneratedConfig, ExpandsTheTemplatesOfTheRun) {
  conf("[G]\nK=${HOME}|${INSTANCE}|${ODM_DIR}|${USER}|${USER_ID}\n");
  const std::string odm = std::filesystem::exists("/odm/lib") ? "/odm" : "/vendor";
  EXPECT_EQ(generated(), file("\n[G]\nK=" + user_.home + "|inst|" + odm + "|" + user_.name + "|" +
                              std::to_string(user_.uid) + "\n"));
}

TEST_F(GeneratedConfig, LeavesOutAGroupWithoutKeys) {
  conf("[A]\nKey=1\nKey=\n[B]\nKey=2\n[C]\n");
  EXPECT_EQ(generated(), file("\n[B]\nKey=2\n"));
}

TEST_F(GeneratedConfig, WritesNoGroupsWhereThereAreNone) {
  conf("# nothing\n");
  EXPECT_EQ(generated(), file(""));
}

TEST_F(GeneratedConfig, ReplacesAnEarlierOutput) {
  conf("[G]\nKey=1\n");
  directory_.write("out", std::string(10000, 'x'));
  EXPECT_EQ(generated(), file("\n[G]\nKey=1\n"));
}

TEST_F(GeneratedConfig, ReadsTheDconfDatabaseOfTheGivenUserAndNotTheCallers) {
  conf("[G]\nA=1\nB=${dconf:/cradle-test/key}\n");
  const DconfDatabase database("[cradle-test]\nkey='of the caller'\n");
  EXPECT_EQ(database.visibleTo([this] { return generated(); }), file("\n[G]\nA=1\n"));
}

// Mount hooks

TEST_F(GeneratedConfig, WritesHookedMountsRightBehindTheHeaderOfTheirGroup) {
  conf("[Config]\nA=1\nMounts=own\n[Other]\nKey=1\n[A]\nKey=1\n");
  directory_.writeScript("c/mount-hooks/b.sh", "echo '/b b none bind 0 0'\n");
  directory_.writeScript("c/mount-hooks/a.sh", "echo '/a a none bind 0 0'\n");
  directory_.writeScript("d/mount-hooks/a.sh", "echo '/d d none bind 0 0'\n");
  EXPECT_EQ(generated(), file("\n[A]\nKey=1\n"
                              "\n[Config]\n"
                              "Mounts=/a a none bind 0 0\n"
                              "Mounts=/b b none bind 0 0\n"
                              "Mounts=/d d none bind 0 0\n"
                              "A=1\nMounts=own\n"
                              "\n[Other]\nKey=1\n"));
}

TEST_F(GeneratedConfig, RunsNoMountHooksWithoutAnEntryOfTheirGroup) {
  directory_.writeScript("c/mount-hooks/a.sh", "touch '" + directory_.path("ran") + "'\n");
  conf("[config]\nKey=1\n[ConfigX]\nKey=1\n[Config]\nKey=1\nKey=\n");
  EXPECT_EQ(generated(), file("\n[ConfigX]\nKey=1\n\n[config]\nKey=1\n"));
  EXPECT_FALSE(std::filesystem::exists(directory_.path("ran")));
}

TEST_F(GeneratedConfig, GivesTheFactsToEveryHook) {
  conf("[Config]\nKey=1\n");
  directory_.writeScript("c/mount-hooks/a.sh", "echo \"/$1/$2$3/$4/$5/$# x none y 0 0\"\n");
  directory_.writeScript("c/property-pre-hooks/a.sh", "echo \"$1|$2|$3|$4|$5|$#\"\n");
  directory_.writeScript("c/property-post-hooks/a.sh", "echo \"$5|$4|$3|$2|$1|$#\"\n");
  const std::string uid = std::to_string(user_.uid);
  const std::string& name = user_.name;
  const std::string& home = user_.home;
  EXPECT_EQ(generated(), file("\n[Config]\nMounts=/" + uid + "/" + name + home +
                                  "/inst/7/5 x none y 0 0\nKey=1\n",
                              "PropertyPre=" + uid + "|" + name + "|" + home + "|inst|7|5\n" +
                                  "PropertyPost=7|inst|" + home + "|" + name + "|" + uid + "|5\n"));
}

// Contributions

TEST_F(GeneratedConfig, WritesAllContributionsOfADirectoryBeforeThoseOfTheNext) {
  conf("[G]\nKey=1\n");
  for (const std::string name : {"d", "c"}) {
    directory_.write(name + "/static/x.ro", "ro " + name + "\n");
    directory_.write(name + "/static/x.lxc", "lxc " + name + " 1\n\nlxc " + name + " 2");
    directory_.write(name + "/static/x.txt", "nothing\n");
    directory_.writeScript(name + "/property-post-hooks/x.sh", "echo post " + name + "\n");
    directory_.writeScript(name + "/property-pre-hooks/x.sh", "echo pre " + name + "\necho\n");
  }
  EXPECT_EQ(generated(), file("\n[G]\nKey=1\n",
                              "PropertyPre=pre c\n"
                              "PropertyPost=post c\n"
                              "DefaultLxc=lxc c 1\n"
                              "DefaultLxc=lxc c 2\n"
                              "DefaultRo=ro c\n"
                              "PropertyPre=pre d\n"
                              "PropertyPost=post d\n"
                              "DefaultLxc=lxc d 1\n"
                              "DefaultLxc=lxc d 2\n"
                              "DefaultRo=ro d\n"));
}

TEST_F(GeneratedConfig, WritesIdsAsUnsignedNumbers) {
  conf("[G]\nKey=1\n");
  EXPECT_EQ(generateConfig(directory_.path("out"), directories(), user_.uid, "", 4294967294), 0);
  EXPECT_TRUE(directory_.read("out").ends_with("\nInstance=\nBaseUid=4294967294\n"))
      << directory_.read("out");
}

// Failures

TEST_F(GeneratedConfig, FailsForAUserWhoDoesNotExist) {
  conf("[G]\nKey=${system:touch " + directory_.path("read") + "}\n");
  const std::uint32_t uid = unusedUserId();
  expectFailure(uid, "ERROR: Failed to get user information for uid " + std::to_string(uid) + ": " +
                         reasonForNoUser(uid) + "\n");
  EXPECT_FALSE(std::filesystem::exists(directory_.path("read")));
}

TEST_F(GeneratedConfig, FailsForAUserWhoCannotBeDetected) {
  conf("[G]\nKey=1\n");
  loginLibrary();
  const std::string told = inChildWithoutDescriptors([this] {
    const int result = status(kUnknownUser);
    return std::to_string(result) + "\n" + log_;
  });
  EXPECT_EQ(told,
            "1\n"
            "WARNING: Could not get sessions for seat0\n"
            "WARNING: Could not create login monitor\n"
            "ERROR: User id must be defined!\n");
  EXPECT_FALSE(std::filesystem::exists(directory_.path("out")));
}

TEST_F(GeneratedConfig, FailsWithoutAnyConfiguration) {
  directory_.write("d/x.txt", "[G]\nKey=1\n");
  expectFailure(user_.uid, "ERROR: No configuration to read in " + directory_.path("c") + ", " +
                               directory_.path("d") + "\n");
}

TEST_F(GeneratedConfig, FailsOnAnInvalidConfiguration) {
  conf("[G]\nKey=1\n");
  const std::string bad = directory_.write("d/bad.conf", "Key=2\nno entry\n");
  directory_.write("out", "as it was");
  EXPECT_EQ(status(user_.uid), 1);
  EXPECT_TRUE(log_.ends_with("ERROR: Failed to load config from '" + bad +
                             "'\nERROR: Invalid configuration in " + bad + "\n"))
      << log_;
  EXPECT_EQ(directory_.read("out"), "as it was");
}

TEST_F(GeneratedConfig, SucceedsThoughHooksFail) {
  conf("[Config]\nKey=1\n");
  const std::string mount = directory_.writeScript("c/mount-hooks/a.sh", "echo no\nexit 65\n");
  const std::string pre = directory_.writeScript("c/property-pre-hooks/a.sh", "echo x\nexit 66\n");
  EXPECT_EQ(generated(), file("\n[Config]\nKey=1\n", "PropertyPre=x\n"));
  EXPECT_EQ(log_, "WARNING: " + mount + " exited with non-zero status: A\n" +
                      "ERROR: Not enough parts in mount entry: no\n" +
                      "WARNING: Invalid mount entry from " + mount + ": no\n" + "WARNING: " + pre +
                      " exited with non-zero status: B\n");
}

TEST_F(GeneratedConfig, RunsMountHooksBeforeItFollowsTheReferencesOfTheirGroup) {
  conf("[Config]\nKey=x${config:Config/Key}\n");
  const std::string hook = directory_.writeScript("c/mount-hooks/a.sh", "exit 65\n");
  EXPECT_EQ(generated(), file("\n[Config]\nKey=\n"));
  EXPECT_EQ(log_, "WARNING: " + hook + " exited with non-zero status: A\n" +
                      "ERROR: Max depth reached, possibly circular reference.\n");
}

TEST_F(GeneratedConfig, SucceedsThoughTheOutputCannotBeOpened) {
  conf("[G]\nKey=1\n");
  std::filesystem::create_directory(directory_.path("out"));
  EXPECT_EQ(status(user_.uid), 0);
  EXPECT_EQ(log_, "");
}

}  // namespace
}  // namespace Cradle::Generators
