// SPDX-License-Identifier: MIT
#include <string>

#include <gtest/gtest.h>

#include "inspect/findings.h"
#include "support/inspection_bench.h"

namespace Cradle::Inspect {
namespace {

using Testing::InspectionBench;

constexpr const char* kSound = "[Config]\nAppIdManglingType=None\n";

TEST(CheckValues, FindsAKeyThatARunNeeds) {
  EXPECT_EQ(InspectionBench({{"1.conf", kSound}}).found(checkValues), "");
  EXPECT_EQ(
      InspectionBench({{"1.conf", "[Config]\nAppIdManglingType=${nope}\n"}}).found(checkValues),
      ":0 missing-key Config/AppIdManglingType is not set. A run for property ends for want of "
      "it.\n");
}

TEST(CheckValues, MissesNoKeyThatMayStandBehindABadLine) {
  EXPECT_EQ(InspectionBench({{"1.conf", "[Config\nAppIdManglingType=None\n"}}).found(checkValues),
            "");
  EXPECT_NE(InspectionBench({{"1.conf", "[Config\nA=None\n"}}).found(checkValues), "");
}

TEST(CheckValues, TellsWhatEndsARunFromWhatIsWrong) {
  const InspectionBench bench(
      {{"1.conf", kSound}, {"2.conf", "[Config]\nAppLaunchMode=x\nUseIds=x\nUseIds=maybe\n"}});
  EXPECT_EQ(bench.found(checkValues),
            "2.conf:2 ending-value 'x' is wrong for Config/AppLaunchMode. A run for property ends "
            "here.\n"
            "2.conf:4 unfit-value 'maybe' is not right for Config/UseIds.\n");
}

TEST(CheckValues, FindsEveryBadMountEntry) {
  const InspectionBench bench(
      {{"1.conf", kSound}, {"2.conf", "[Config]\nMounts=/a a none bind 0 0;/b\tb\n"}});
  EXPECT_NE(bench.found(checkValues).find("2.conf:2 mount-entry "), std::string::npos);
  EXPECT_EQ(bench.found(checkValues).find("mount-entry"),
            bench.found(checkValues).rfind("mount-entry"));
}

TEST(CheckValues, PassesOverTheEmptyElementsOfLists) {
  const InspectionBench bench(
      {{"1.conf", kSound},
       {"2.conf", "[Config]\nMounts=${config:A/Nope}\nUseIds=${config:A/No}\n"}});
  EXPECT_EQ(bench.found(checkValues), "2.conf:3 unfit-value '' is not right for Config/UseIds.\n");
}

TEST(CheckValues, FindsARequiredDeviceThatIsNotThere) {
  const InspectionBench bench({{"1.conf", kSound},
                               {"2.conf",
                                "[Devices]\nRequiredDevNodes=null;cradle-none\n"
                                "DevNodes=cradle-none\n"}});
  EXPECT_EQ(
      bench.found(checkValues),
      "2.conf:2 required-device The required device 'cradle-none' is not there. A run for lxc "
      "ends here.\n");
}

TEST(CheckValues, WaitsForCommands) {
  InspectionBench bench(
      {{"1.conf", kSound}, {"2.conf", "[Config]\nUseIds=${system:echo maybe}\n"}});
  EXPECT_EQ(bench.found(checkValues), "");
  bench.lookAgain(true);
  EXPECT_EQ(bench.found(checkValues),
            "2.conf:2 unfit-value 'maybe' is not right for Config/UseIds.\n");
}

TEST(CheckValues, WaitsForCommandsThatReferencesLeadTo) {
  InspectionBench bench({{"1.conf",
                          "[Config]\nAppIdManglingType=${config:A/B}\nMounts=${config:A/C}\n"
                          "[A]\nB=${system:echo None}\nC=${system:echo /a b none bind 0 0}\n"}});
  EXPECT_EQ(bench.found(checkValues), "");
  EXPECT_EQ(bench.found(checkReferences), "");
  bench.lookAgain(true);
  EXPECT_EQ(bench.found(checkValues), "");
}

}  // namespace
}  // namespace Cradle::Inspect
