// SPDX-License-Identifier: MIT
#include "generators/run.h"

#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/config_text.h"
#include "support/log_capture.h"
#include "support/temporary_directory.h"
#include "support/users.h"

namespace Cradle::Generators {
namespace {

using Testing::KnownUser;
using Testing::LogCapture;
using Testing::TemporaryDirectory;
using Testing::thisUser;
using Testing::unusedUserId;
using Testing::valuesOf;

constexpr const char* kStored =
    "[GeneratedConfig]\nUserId=42\nUser=stored\nHome=/stored\nInstance=inst\nBaseUid=9\n";

struct Kind {
  const char* name;
  const RunKind& kind;
};

constexpr Kind kKinds[] = {{"config", kConfigRun}, {"lxc", kLxcRun}, {"property", kPropertyRun}};

class RunTest : public ::testing::Test {
 protected:
  std::unique_ptr<Generators::Run> prepare(const RunKind& kind,
                                           std::uint32_t userId = thisUser().uid) {
    const LogCapture log;
    auto run = prepareRun(kind, directories_, {.userId = userId, .instance = "i", .baseUid = 7});
    log_ = log.text();
    return run;
  }

  // The value of a key that is one template, or "missing".
  std::string templateValue(const RunKind& kind, const std::string& name) {
    directory_.write("c/template.conf", "[G]\nKey=${" + name + "}\n");
    return valuesOf(prepare(kind)->parser, "G", "Key");
  }

  TemporaryDirectory directory_;
  std::vector<std::string> directories_ = {directory_.path("c")};
  std::string log_;
};

TEST_F(RunTest, IsForTheGivenUserWithoutAGeneratedConfiguration) {
  directory_.write("c/x.conf", "[G]\nKey=1\n");
  const KnownUser user = thisUser();
  for (const auto& [name, kind] : kKinds) {
    const auto run = prepare(kind);
    EXPECT_FALSE(run->fromGenerated) << name;
    EXPECT_EQ(run->hookArguments, (std::vector{std::to_string(user.uid), user.name, user.home,
                                               std::string("i"), std::string("7")}))
        << name;
    EXPECT_EQ(valuesOf(run->parser, "G", "Key"), "|1|") << name;
    EXPECT_EQ(log_, "") << name;
  }
}

TEST_F(RunTest, DefinesTheNamedTemplates) {
  const KnownUser user = thisUser();
  for (const auto& [name, kind] : kKinds) {
    EXPECT_EQ(templateValue(kind, "HOME"), "|" + user.home + "|") << name;
    EXPECT_EQ(templateValue(kind, "INSTANCE"), "|i|") << name;
    EXPECT_EQ(templateValue(kind, "USER"), "|" + user.name + "|") << name;
    EXPECT_EQ(templateValue(kind, "USER_ID"), "|" + std::to_string(user.uid) + "|") << name;
  }
}

TEST_F(RunTest, DefinesTheOdmDirectoryButForProperties) {
  const std::string directory = std::filesystem::exists("/odm/lib") ? "|/odm|" : "|/vendor|";
  EXPECT_EQ(templateValue(kConfigRun, "ODM_DIR"), directory);
  EXPECT_EQ(templateValue(kLxcRun, "ODM_DIR"), directory);
  EXPECT_EQ(templateValue(kPropertyRun, "ODM_DIR"), "missing");
  EXPECT_EQ(log_, "ERROR: No such template 'ODM_DIR'\n");
}

TEST_F(RunTest, TakesItsFactsFromAGeneratedConfigurationWithoutTemplatesOrArguments) {
  directory_.write("c/x.conf", kStored);
  directory_.write("c/y.conf", "[G]\nKey=${HOME}\n");
  for (const RunKind* const kind : {&kLxcRun, &kPropertyRun}) {
    const auto run = prepare(*kind, unusedUserId());
    EXPECT_TRUE(run->fromGenerated);
    EXPECT_EQ(run->facts.userId, 42U);
    EXPECT_EQ(run->facts.user, "stored");
    EXPECT_EQ(run->facts.home, "/stored");
    EXPECT_EQ(run->facts.instance, "inst");
    EXPECT_EQ(run->facts.baseUid, 9U);
    EXPECT_TRUE(run->hookArguments.empty());
    EXPECT_EQ(valuesOf(run->parser, "G", "Key"), "missing");
    EXPECT_EQ(log_, "ERROR: No such template 'HOME'\n");
  }
}

TEST_F(RunTest, OfTheFirstKindTakesNoFactsFromAnEarlierOne) {
  directory_.write("c/x.conf", kStored);
  const auto run = prepare(kConfigRun);
  EXPECT_FALSE(run->fromGenerated);
  EXPECT_EQ(run->facts.user, thisUser().name);
  EXPECT_EQ(run->facts.instance, "i");
  EXPECT_EQ(run->hookArguments.size(), 5U);
}

TEST_F(RunTest, LoadsAllDirectoriesInOrder) {
  directory_.write("a/x.conf", "[G]\nKey=a\n");
  directory_.write("b/x.conf", "[G]\nKey=b\n");
  directories_ = {directory_.path("b"), directory_.path("missing"), directory_.path("a")};
  for (const auto& [name, kind] : kKinds) {
    EXPECT_EQ(valuesOf(prepare(kind)->parser, "G", "Key"), "|b|a|") << name;
    EXPECT_EQ(log_, "") << name;
  }
}

// Failures

TEST_F(RunTest, IsNoneWithoutConfigurationWhichIsSaidOfAllDirectories) {
  directories_ = {directory_.path("a"), directory_.path("b/")};
  for (const auto& [name, kind] : kKinds) {
    EXPECT_EQ(prepare(kind), nullptr) << name;
    EXPECT_EQ(log_, "ERROR: No configuration to read in " + directories_[0] + ", " +
                        directories_[1] + "\n")
        << name;
  }
}

TEST_F(RunTest, IsNoneForAnInvalidConfigurationWhichIsReportedOnce) {
  const std::string file = directory_.write("c/x.conf", "[G]\nno entry\n");
  for (const auto& [name, kind] : kKinds) {
    EXPECT_EQ(prepare(kind), nullptr) << name;
    EXPECT_EQ(log_, "ERROR: Could not parse line as key in " + file +
                        " (2): 'no entry'\nERROR: Failed to load config from '" + file +
                        "'\nERROR: Invalid configuration in " + file + "\n")
        << name;
  }
}

TEST_F(RunTest, IsNoneForAUserWhoDoesNotExist) {
  directory_.write("c/x.conf", "[G]\nKey=1\n");
  const std::uint32_t uid = unusedUserId();
  const std::string reason = Testing::reasonForNoUser(uid);
  for (const auto& [name, kind] : kKinds) {
    EXPECT_EQ(prepare(kind, uid), nullptr) << name;
    EXPECT_EQ(log_, "ERROR: Failed to get user information for uid " + std::to_string(uid) + ": " +
                        reason + "\n")
        << name;
  }
}

}  // namespace
}  // namespace Cradle::Generators
