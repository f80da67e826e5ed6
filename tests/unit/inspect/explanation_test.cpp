// SPDX-License-Identifier: MIT
#include "inspect/explanation.h"

#include <string>

#include <gtest/gtest.h>

#include "inspect/explain_text.h"
#include "support/inspection_bench.h"

namespace Cradle::Inspect {
namespace {

using Testing::InspectionBench;

TEST(Explanation, HasTheValuesThatCount) {
  const InspectionBench bench({{"1.conf", "[Config]\nUseIds=true\nUseIds=maybe\nMounts=a;b\n"}});
  const Explanation one(bench.inspection, "Config", "UseIds");
  EXPECT_EQ(one.statements.size(), 2U);
  ASSERT_EQ(one.values.size(), 1U);
  EXPECT_EQ(one.values[0].text, "maybe");
  EXPECT_FALSE(one.values[0].fits);
  EXPECT_EQ(one.generated, "UseIds=true;maybe");
  const Testing::LogCapture log;
  EXPECT_EQ(Explanation(bench.inspection, "Config", "Mounts").values.size(), 2U);
}

TEST(Explanation, HoldsNothingAgainstWhatIsNotKnown) {
  const InspectionBench bench({{"1.conf", "[Config]\nUseIds=${system:x}\n[Own]\nK=1\n"}});
  EXPECT_TRUE(Explanation(bench.inspection, "Config", "UseIds").values[0].fits);
  const Explanation own(bench.inspection, "Own", "K");
  EXPECT_EQ(own.known, nullptr);
  EXPECT_TRUE(own.values[0].fits);
  EXPECT_TRUE(own.rows.empty());
}

TEST(Explanation, DoesNotTellTheEndOfARunFromWhatIsNotKnown) {
  InspectionBench bench({{"1.conf",
                          "[Config]\nAppIdManglingType=${config:A/B}\nMounts=${config:A/Nope}\n"
                          "[A]\nB=${system:echo None}\n"}});
  const Testing::LogCapture log;
  const Explanation explanation(bench.inspection, "Config", "AppIdManglingType");
  EXPECT_FALSE(explanation.isComplete);
  EXPECT_TRUE(explanation.values[0].fits);
  EXPECT_FALSE(explanation.rows.front().ends);
  EXPECT_TRUE(Explanation(bench.inspection, "Config", "Mounts").values[0].fits);
  const std::string text = explainText(bench.inspection, explanation, false);
  EXPECT_NE(text.find("  is not known before all values are\n"), std::string::npos) << text;
}

TEST(Explanation, IsEmptyForAKeyThatIsNowhere) {
  const InspectionBench bench({{"1.conf", "[Own]\nK=1\nK=\n"}});
  EXPECT_EQ(Explanation(bench.inspection, "Own", "K").generated, "");
  EXPECT_TRUE(Explanation(bench.inspection, "Own", "L").statements.empty());
  EXPECT_FALSE(Explanation(bench.inspection, "Config", "Arch").rows.empty());
}

}  // namespace
}  // namespace Cradle::Inspect
