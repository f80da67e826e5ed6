// SPDX-License-Identifier: MIT
#include "inspect/value_facts.h"

#include <string>

#include <gtest/gtest.h>

#include "inspect/reference_walk.h"
#include "support/inspection_bench.h"

namespace Cradle::Inspect {
namespace {

using Testing::InspectionBench;

ValueFacts::Facts factsOf(const InspectionBench& bench, const char* key) {
  ValueFacts facts(bench.inspection);
  return facts.of(*keptValues(*bench.inspection.journal.find("A", key)).front().part);
}

TEST(ValueFacts, CountWhatIsNeeded) {
  const InspectionBench bench(
      {{"1.conf", "[A]\nK=${config:A/L}${config:A/M}${config:A/None}\nL=${config:A/M}\nM=x\n"}});
  EXPECT_EQ(factsOf(bench, "M").values, 1U);
  EXPECT_EQ(factsOf(bench, "L").values, 2U);
  EXPECT_EQ(factsOf(bench, "K").values, 4U);
  EXPECT_TRUE(factsOf(bench, "K").resolves());
}

TEST(ValueFacts, FindWhatLeadsIntoACircle) {
  const InspectionBench bench(
      {{"1.conf",
        "[A]\nK=${config:A/L}\nL=${config:A/M}\nM=${config:A/L}\nN=<${config:A/N}>;x\n"
        "O=${config:A/L}${config:A/M}\n"}});
  for (const char* const key : {"K", "L", "M", "O"}) {
    EXPECT_TRUE(factsOf(bench, key).circular) << key;
    EXPECT_FALSE(factsOf(bench, key).resolves());
  }
  EXPECT_FALSE(factsOf(bench, "N").circular);
}

TEST(ValueFacts, KnowATextThatIsEmptyInAnyCase) {
  const InspectionBench bench(
      {{"1.conf", "[A]\nK=${system:x}${config:A/K}\nL=${config:A/M}\nM=${system:x}\n"}});
  EXPECT_FALSE(factsOf(bench, "K").known);
  EXPECT_TRUE(factsOf(bench, "K").textIsKnown());
  EXPECT_FALSE(factsOf(bench, "L").textIsKnown());
}

TEST(ValueFacts, KnowNothingOfAnUnknownUser) {
  InspectionBench bench({{"1.conf", "[A]\nK=${config:A/L}\nL=${USER_ID}\nM=${INSTANCE}\n"}});
  EXPECT_TRUE(factsOf(bench, "K").known);
  bench.settings.userId = Testing::unusedUserId();
  bench.lookAgain();
  EXPECT_FALSE(factsOf(bench, "K").known);
  EXPECT_TRUE(factsOf(bench, "M").known);
}

TEST(ValueFacts, FindTextThatMayBeTakenForSomethingElse) {
  const InspectionBench bench(
      {{"1.conf", "[A]\nK=${config:A/L}\nL=$$\nM=${config:A/N}\nN=${USER}\nO=${realpath:/..}\n"}});
  EXPECT_TRUE(factsOf(bench, "K").special);
  EXPECT_FALSE(factsOf(bench, "M").special);
  EXPECT_FALSE(factsOf(bench, "O").special);
}

// Chains of every length, and with references to two others, as a walk finds them.
TEST(ValueFacts, AgreeWithAWalk) {
  std::string text = "[A]\nK0=x\n";
  for (int i = 1; i < 60; ++i) {
    text += "K" + std::to_string(i) + "=${config:A/K" + std::to_string(i - 1) + "}" +
            (i % 7 == 0 ? "${config:A/K" + std::to_string(i / 7) + "}" : "") + "\n";
  }
  const InspectionBench bench({{"1.conf", text}});
  ValueFacts facts(bench.inspection);
  for (const auto& [key, history] : bench.inspection.journal.groups.find("A")->second) {
    const Part& part = history.front().parts.front();
    const ReferenceWalk walk = followReferences(bench.inspection.journal, "A/" + key, part);
    EXPECT_EQ(facts.of(part).resolves(), walk.end == ReferenceWalk::End::Resolved) << key;
  }
}

TEST(ValueFacts, SurviveALongChain) {
  std::string text = "[A]\n";
  for (int i = 0; i < 100'000; ++i) {
    text += "K" + std::to_string(i) + "=${config:A/K" + std::to_string(i + 1) + "}\n";
  }
  const InspectionBench bench({{"1.conf", text}});
  EXPECT_EQ(factsOf(bench, "K0").values, kMostValues + 1);
}

}  // namespace
}  // namespace Cradle::Inspect
