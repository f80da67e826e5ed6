// SPDX-License-Identifier: MIT
#include <string>

#include <gtest/gtest.h>

#include "inspect/findings.h"
#include "support/inspection_bench.h"

namespace Cradle::Inspect {
namespace {

using Testing::InspectionBench;

TEST(CheckLosses, FindsWhatALaterFileTakesAway) {
  const InspectionBench bench({{"1.conf", "[Config]\nHostname=a\nMounts=x;y\n"},
                               {"2.conf", "[Config]\nMounts=\nHostname=b\n"}});
  EXPECT_EQ(bench.found(checkLosses),
            "1.conf:2 overridden-value Config/Hostname loses this value to 2.conf:3.\n"
            "1.conf:3 cleared-value Config/Mounts loses this value: 2.conf:2 clears the key.\n"
            "1.conf:3 cleared-value Config/Mounts loses this value: 2.conf:2 clears the key.\n");
}

TEST(CheckLosses, TakesOneFileForItsOwnMaster) {
  const InspectionBench bench(
      {{"1.conf", "[Config]\nHostname=a\nHostname=b\nMounts=x\nMounts=\n"}});
  EXPECT_EQ(bench.found(checkLosses), "");
}

TEST(CheckLosses, DoesNotGuessTheGroupBehindABadLine) {
  const InspectionBench bench({{"1.conf", "[Config]\nHostname=a\n"},
                               {"2.conf", "[Config]\n[Displ\xc3\xa4y]\nHostname=b\n"}});
  EXPECT_EQ(bench.found(checkLosses), "");
}

TEST(CheckLosses, SaysNothingOfClearingsBehindABadLine) {
  const InspectionBench bench({{"1.conf", "[Bad\nK=a\n"}, {"2.conf", "[Bad\nK=\n"}});
  EXPECT_EQ(bench.found(checkLosses), "");
}

TEST(CheckLosses, HasNoneWhereAllValuesCount) {
  const InspectionBench bench({{"1.conf", "[Own]\nK=a\n"}, {"2.conf", "[Own]\nK=b\n"}});
  EXPECT_EQ(bench.found(checkLosses), "");
}

}  // namespace
}  // namespace Cradle::Inspect
