// SPDX-License-Identifier: MIT
#include <string>

#include <gtest/gtest.h>

#include "inspect/findings.h"
#include "support/environment_variable.h"
#include "support/inspection_bench.h"

namespace Cradle::Inspect {
namespace {

using Testing::InspectionBench;

TEST(CheckReferences, FindsThoseToNothing) {
  const InspectionBench bench(
      {{"1.conf", "[A]\nKey=1\nK=${config:A/Kay}${config:B/X}${config:A/Key}\n"}});
  EXPECT_EQ(bench.found(checkReferences),
            "1.conf:3 missing-reference It refers to A/Kay, which is not set (did you mean Key?). "
            "Nothing stands in its place.\n"
            "1.conf:3 missing-reference It refers to B/X, which is not set. Nothing stands in its "
            "place.\n");
}

TEST(CheckReferences, FindsACircleFromEachOfItsKeys) {
  const InspectionBench bench({{"1.conf", "[A]\nK=${config:A/L}\nL=${config:A/K}\n"}});
  EXPECT_EQ(bench.found(checkReferences),
            "1.conf:2 reference-circle A/K is empty, because its references go round in a circle: "
            "A/K -> A/L -> A/K.\n"
            "1.conf:3 reference-circle A/L is empty, because its references go round in a circle: "
            "A/L -> A/K -> A/L.\n");
}

TEST(CheckReferences, FindsAChainThatIsTooLong) {
  std::string text = "[A]\n";
  for (int i = 0; i < 33; ++i) {
    text += "K" + std::to_string(i) + "=${config:A/K" + std::to_string(i + 1) + "}\n";
  }
  const InspectionBench bench({{"1.conf", text + "K33=x\n"}});
  EXPECT_EQ(bench.found(checkReferences),
            "1.conf:2 reference-depth A/K0 is empty, because more than 33 values are needed for "
            "it.\n");
}

TEST(CheckReferences, FindsTextThatDoesNotSurviveAGeneratedConfiguration) {
  const InspectionBench bench({{"1.conf", "[A]\nK=$$x\nL=;y\n"}});
  EXPECT_EQ(bench.found(checkReferences),
            "1.conf:2 changed-by-reading-back A/K becomes '$x', which changes when a generated "
            "configuration is read back: '$' begins a template.\n");
}

TEST(CheckReferences, FindsTemplatesInWhatTemplatesGive) {
  const Testing::EnvironmentVariable variable("CRADLE_TEST", "a${USER}");
  const InspectionBench bench({{"1.conf", "[A]\nK=${env:CRADLE_TEST}\n"}});
  EXPECT_EQ(bench.found(checkReferences),
            "1.conf:2 changed-by-reading-back A/K becomes 'a${USER}', which changes when a "
            "generated configuration is read back: '$' begins a template.\n");
}

TEST(CheckReferences, FindsWhatIsMissingBeforeWhatDoesNotSurvive) {
  const InspectionBench bench({{"1.conf", "[A]\nK=$$${config:A/L}\n"}});
  const std::string found = bench.found(checkReferences);
  EXPECT_TRUE(found.starts_with("1.conf:2 missing-reference ")) << found;
  EXPECT_NE(found.find("\n1.conf:2 changed-by-reading-back "), std::string::npos) << found;
}

TEST(CheckReferences, SaysOfTextInACircleOnlyThatItIsEmpty) {
  const InspectionBench bench({{"1.conf", "[A]\nK=$$x${config:A/K}\n"}});
  EXPECT_EQ(bench.found(checkReferences),
            "1.conf:2 reference-circle A/K is empty, because its references go round in a circle: "
            "A/K -> A/K.\n");
}

TEST(CheckReferences, DoesNotGuessWhatIsNotKnown) {
  InspectionBench bench({{"1.conf", "[A]\nK=${system:echo}$$\nL=${USER}\n"}});
  EXPECT_EQ(bench.found(checkReferences), "");
  bench.settings.userId = Testing::unusedUserId();
  bench.lookAgain();
  EXPECT_EQ(bench.found(checkReferences), "");
}

}  // namespace
}  // namespace Cradle::Inspect
