// SPDX-License-Identifier: MIT
#include <string>

#include <gtest/gtest.h>

#include "inspect/findings.h"
#include "support/inspection_bench.h"

namespace Cradle::Inspect {
namespace {

using Testing::InspectionBench;

TEST(CheckNames, FindsAMisspelledKeyAndGroup) {
  const InspectionBench bench({{"1.conf", "[Display]\nDensty=1\n[Confg]\nArch=x\nB=y\n"}});
  EXPECT_EQ(bench.found(checkNames),
            "1.conf:2 unknown-key Display/Densty is no key that is known (did you mean Density?). "
            "Nothing reads it.\n"
            "1.conf:4 unknown-group [Confg] is no group that is known (did you mean Config?). "
            "Nothing reads its keys.\n");
}

TEST(CheckNames, NamesTheFirstLineOfAnUnknownGroup) {
  const InspectionBench bench({{"1.conf", "[Own thing]\nB=1\nA=2\n"}});
  EXPECT_EQ(bench.found(checkNames),
            "1.conf:2 unknown-group [Own thing] is no group that is known. Nothing reads its "
            "keys.\n");
}

TEST(CheckNames, NamesTheFirstLineOfAKeyThatIsAssignedTwice) {
  const InspectionBench bench({{"1.conf", "[Display]\nDensty=1\n[Own]\nA=1\nA=2\nB=3\n"},
                               {"2.conf", "[Display]\nDensty=2\n"}});
  EXPECT_EQ(bench.found(checkNames),
            "1.conf:2 unknown-key Display/Densty is no key that is known (did you mean Density?). "
            "Nothing reads it.\n"
            "1.conf:4 unknown-group [Own] is no group that is known. Nothing reads its keys.\n");
}

TEST(CheckNames, NamesTheFirstLineOfAGroupWhoseFirstKeyIsAssignedTwice) {
  const InspectionBench bench({{"1.conf", "[Own thing]\nB=1\nA=2\nB=3\n"}});
  EXPECT_TRUE(bench.found(checkNames).starts_with("1.conf:2 unknown-group "));
}

TEST(CheckNames, NamesTheFirstFileOfAnUnknownGroup) {
  const InspectionBench bench(
      {{"1.conf", "[Own thing]\nB=1\n"}, {"2.conf", "[Own thing]\nA=2\nC=3\n"}});
  EXPECT_TRUE(bench.found(checkNames).starts_with("1.conf:2 unknown-group "));
}

TEST(CheckNames, LeavesKeysInPeaceToWhichOthersRefer) {
  const InspectionBench bench(
      {{"1.conf", "[Own]\nA=1\n[Config]\nHostname=${config:Own/A}${config:Config/X}\nX=2\n"}});
  EXPECT_EQ(bench.found(checkNames), "");
}

TEST(CheckNames, LooksAtTheOtherKeysOfAGroupThatIsReferredTo) {
  const InspectionBench bench({{"1.conf", "[Own]\nA=1\nB=2\n[Config]\nArch=${config:Own/A}\n"}});
  EXPECT_EQ(bench.found(checkNames),
            "1.conf:3 unknown-key Own/B is no key that is known. Nothing reads it.\n");
}

TEST(CheckNames, DoesNotGuessTheGroupBehindABadLine) {
  const InspectionBench bench(
      {{"1.conf", "\xef\xbb\xbf[Config]\nX=1\n[Config]\nArch=a\n[Displ\xc3\xa4y]\nDensity=240\n"}});
  EXPECT_EQ(bench.found(checkNames), "");
}

TEST(CheckNames, FindsOneValueThatIsSplit) {
  const InspectionBench bench(
      {{"1.conf", "[Config]\nHostname=a;b;${env:CRADLE_NOT_SET}\nArch=a;\nMounts=a;b\n"}});
  EXPECT_EQ(bench.found(checkNames),
            "1.conf:2 split-value A ';' splits the value of Config/Hostname, which takes one. Only "
            "the last part counts: 'b'.\n");
}

}  // namespace
}  // namespace Cradle::Inspect
