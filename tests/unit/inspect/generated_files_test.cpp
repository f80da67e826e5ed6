// SPDX-License-Identifier: MIT
#include "inspect/generated_files.h"

#include <vector>

#include <gtest/gtest.h>

#include "support/inspection_bench.h"

namespace Cradle::Inspect {
namespace {

using Testing::InspectionBench;

TEST(GeneratedFiles, AreThoseWithTheUserOfARun) {
  const InspectionBench bench({{"1.conf", "[GeneratedConfig]\nUser=a\nUser=b\n"},
                               {"2.conf", "[Config]\nUser=c\n"},
                               {"3.conf", "[GeneratedConfig]\nUser=d\nUser=e\n"}});
  EXPECT_EQ(generatedFiles(bench.inspection.journal), (std::vector<std::uint32_t>{0, 2}));
}

TEST(GeneratedFiles, AreNoneWithoutOne) {
  EXPECT_TRUE(generatedFiles(
                  InspectionBench({{"1.conf", "[GeneratedConfig]\nHome=/\n"}}).inspection.journal)
                  .empty());
}

}  // namespace
}  // namespace Cradle::Inspect
