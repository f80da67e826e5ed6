// SPDX-License-Identifier: MIT
#include "inspect/inspection.h"

#include <cstdlib>
#include <string>

#include <dlfcn.h>
#include <gtest/gtest.h>

#include "generators/user_database.h"
#include "support/inspection_bench.h"

namespace Cradle::Inspect {
namespace {

using Testing::InspectionBench;

TEST(Inspection, HasTheFactsOfTheRun) {
  const InspectionBench bench({{"1.conf", "[A]\nK=${INSTANCE}-${config:A/L}\nL=${USER}\n"}});
  EXPECT_TRUE(bench.inspection.userIsKnown);
  std::string text;
  bench.inspection.parser().getValue("A", "K", text);
  EXPECT_EQ(text, "default-" + Testing::thisUser().name);
}

TEST(Inspection, LeavesUnknownNamesAsTheyAre) {
  InspectionBench bench({{"1.conf", "[A]\nK=${HOME} ${USER} ${USER_ID} ${INSTANCE}\n"}});
  bench.settings.userId = Testing::unusedUserId();
  bench.lookAgain();
  EXPECT_FALSE(bench.inspection.userIsKnown);
  std::string text;
  bench.inspection.parser().getValue("A", "K", text);
  EXPECT_EQ(text, "${HOME} ${USER} ${USER_ID} default");
}

TEST(Inspection, KnowsNoTemplateWithoutAName) {
  InspectionBench bench({{"1.conf", "[A]\nK=${}\n"}});
  bench.settings.userId = Testing::unusedUserId();
  bench.lookAgain();
  EXPECT_FALSE(bench.inspection.parser().hasKey("A", "K"));
}

TEST(Inspection, TakesTheFactsOfAGeneratedConfiguration) {
  constexpr const char* kFacts =
      "[GeneratedConfig]\nUserId=7\nUser=u\nHome=/u\nInstance=i\nBaseUid=0\n";
  const InspectionBench bench({{"1.conf", kFacts}}, InspectionBench::OutputType::Lxc);
  EXPECT_TRUE(bench.inspection.userIsKnown);
  EXPECT_EQ(bench.inspection.run->facts.user, "u");
  EXPECT_EQ(bench.inspection.run->facts.instance, "i");
}

TEST(Inspection, TakesTheFactsOfTheHostWhereThoseOfAConfigurationAreOutOfReach) {
  const InspectionBench bench({{"1.conf", "bad\n"}}, InspectionBench::OutputType::Property);
  EXPECT_TRUE(bench.inspection.userIsKnown);
  EXPECT_EQ(bench.inspection.run->facts.user, Testing::thisUser().name);
}

TEST(Inspection, TakesNoFactsThatMightKeepItWaiting) {
  constexpr const char* kFacts =
      "[A]\nK=${envfile:/dev/zero:X}\n[GeneratedConfig]\nUserId=7\nUser=u\nHome=/u\nBaseUid=0\n";
  const std::string more = "Instance=${INSTANCE}${envfile:/dev/zero:X}${INSTANCE}\n";
  const InspectionBench fine({{"1.conf", kFacts}}, InspectionBench::OutputType::Lxc);
  EXPECT_EQ(fine.inspection.run->facts.user, "u");
  const InspectionBench named({{"1.conf", std::string(kFacts) + "Instance=${INSTANCE}\n"}},
                              InspectionBench::OutputType::Lxc);
  EXPECT_EQ(named.inspection.run->facts.user, "u");
  const InspectionBench bench({{"1.conf", kFacts + more}}, InspectionBench::OutputType::Lxc);
  EXPECT_EQ(bench.inspection.run->facts.user, Testing::thisUser().name);
}

TEST(Inspection, RunsCommandsOnlyWhenItMay) {
  InspectionBench bench({{"1.conf", "[A]\nK=${system:echo x}\n"}});
  const auto textNow = [&] {
    return bench.inspection.textOf(
        bench.inspection.journal.find("A", "K")->front().parts.front().value);
  };
  EXPECT_EQ(textNow(), "${system:echo x}");
  bench.lookAgain(true);
  EXPECT_EQ(textNow(), "x");
}

TEST(Inspection, KnowsTheRunOfEachOutput) {
  using CommandLine::OutputType;
  EXPECT_EQ(&runKind(OutputType::Config), &Generators::kConfigRun);
  EXPECT_EQ(&runKind(OutputType::Lxc), &Generators::kLxcRun);
  EXPECT_EQ(&runKind(OutputType::Property), &Generators::kPropertyRun);
}

// The library that stands in for the login manager's can be loaded where none has been, and no more
// than once.
class InspectionDeathTest : public ::testing::Test {
 protected:
  InspectionDeathTest() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }
};

TEST_F(InspectionDeathTest, WaitsForNobody) {
  const auto look = [] {
    setenv("SEAT", "", 1);
    const bool loaded = dlopen(SYSTEMD_STUB, RTLD_NOW) != nullptr;
    {
      InspectionBench bench({{"1.conf", "[A]\nK=1\n"}});
      bench.settings.userId = Generators::kUnknownUser;
      bench.lookAgain();
    }
    std::exit(loaded ? 0 : 2);
  };
  EXPECT_EXIT(look(), ::testing::ExitedWithCode(0), "^(look .\n)+$");
}

}  // namespace
}  // namespace Cradle::Inspect
