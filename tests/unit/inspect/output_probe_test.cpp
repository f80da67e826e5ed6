// SPDX-License-Identifier: MIT
#include "inspect/output_probe.h"

#include <string>

#include <gtest/gtest.h>

#include "support/inspection_bench.h"

namespace Cradle::Inspect {
namespace {

using Testing::InspectionBench;

// "OUTPUT TEXT" of each row of a key, "!" where the run ends.
std::string probed(const InspectionBench& bench, const Generators::ConfigKey& key) {
  std::string text;
  for (const ProbedRow& row : probeRows(bench.inspection, key)) {
    text += std::string(row.output) + " " + row.key + " (" + row.condition + ") " + row.text +
            (row.ends ? "!\n" : "\n");
  }
  return text;
}

TEST(OutputProbe, WritesTheLinesOfAKey) {
  const InspectionBench bench({{"1.conf", "[Config]\nHostname=h\n"}});
  EXPECT_EQ(probed(bench, {"Config", "Hostname"}),
            "lxc lxc.uts.name (if present) lxc.uts.name = h\n\n");
}

TEST(OutputProbe, HasRowsThatOnlyAskForAKey) {
  const InspectionBench bench({{"1.conf", ""}});
  EXPECT_EQ(probed(bench, {"Config", "UseIds"}),
            "property ro.quoll.host_user_id (when Config/UseIds is true) \n"
            "property ro.quoll.host_group_id (when Config/UseIds is true) \n");
}

TEST(OutputProbe, KnowsWhereARunEnds) {
  const InspectionBench bench({{"1.conf", "[Config]\nAppIdManglingType=x\nHostname=h\n"}});
  EXPECT_EQ(endedOutput(bench.inspection, {"Config", "AppIdManglingType"}), "property");
  EXPECT_EQ(endedOutput(bench.inspection, {"Config", "Hostname"}), "");
  EXPECT_EQ(probed(bench, {"Own", "Key"}), "");
}

}  // namespace
}  // namespace Cradle::Inspect
