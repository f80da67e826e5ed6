// SPDX-License-Identifier: MIT
#include "inspect/findings.h"

#include <string>

#include <gtest/gtest.h>

#include "support/inspection_bench.h"

namespace Cradle::Inspect {
namespace {

using Testing::InspectionBench;

TEST(Findings, HaveTheirWordsFilledIn) {
  const InspectionBench bench({{"1.conf", ""}});
  Findings findings(bench.inspection.journal);
  findings.add(FindingId::UnknownKey, Place{0, 7}, {"A/B", " (perhaps)", " A"});
  const std::vector<Finding> found = findings.take();
  ASSERT_EQ(found.size(), 1U);
  EXPECT_EQ(found[0].path, bench.directory.path("1.conf"));
  EXPECT_EQ(found[0].line, 7U);
  EXPECT_EQ(found[0].sentence, "A/B is no key that is known (perhaps). Nothing reads it.");
  EXPECT_EQ(found[0].advice, "\"cradle-inspect-config keys A\" lists the keys.");
}

TEST(Findings, ComeBySeverityFileAndLine) {
  const InspectionBench bench({{"1.conf", ""}, {"2.conf", ""}});
  Findings findings(bench.inspection.journal);
  findings.add(FindingId::NoUser, "", 0, {});
  findings.add(FindingId::HookName, Place{1, 1}, {"x"});
  findings.add(FindingId::HookName, Place{0, 2}, {"x"});
  findings.add(FindingId::HookName, Place{0, 1}, {"x"});
  findings.add(FindingId::UnreadableFile, Place{1, 0}, {"x"});
  const std::vector<Finding> found = findings.take();
  std::string order;
  for (const Finding& finding : found) {
    order += bench.inner(finding.path) + ":" + std::to_string(finding.line) + " ";
  }
  EXPECT_EQ(order, "2.conf:0 1.conf:1 1.conf:2 2.conf:1 :0 ");
  EXPECT_EQ(countOf(found, Severity::Error), 1U);
  EXPECT_EQ(countOf(found, Severity::Warning), 3U);
  EXPECT_EQ(countOf(found, Severity::Note), 1U);
}

}  // namespace
}  // namespace Cradle::Inspect
