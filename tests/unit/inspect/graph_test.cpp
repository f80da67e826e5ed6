// SPDX-License-Identifier: MIT
#include "inspect/graph.h"

#include <string>

#include <gtest/gtest.h>

#include "support/inspection_bench.h"

namespace Cradle::Inspect {
namespace {

using Testing::InspectionBench;

// "FROM TO" of each reference, those of a circle with "!".
std::string referencesOf(const Graph& graph) {
  std::string text;
  for (const GraphReference& reference : graph.references) {
    text +=
        reference.from.second + " " + reference.to.second + (reference.inCircle ? "!" : "") + "\n";
  }
  return text;
}

TEST(Graph, HoldsTheKeysThatAreTiedToOthers) {
  const InspectionBench bench(
      {{"1.conf", "[A]\nK=${config:A/L}\nM=1\n"}, {"2.conf", "[A]\nL=2\n"}});
  const Graph graph = makeGraph(bench.inspection, false);
  EXPECT_EQ(referencesOf(graph), "K L\n");
  ASSERT_EQ(graph.keys.size(), 2U);
  EXPECT_EQ(bench.inner(graph.keys.at({"A", "K"}).place), "1.conf:2");
  EXPECT_EQ(bench.inner(graph.keys.at({"A", "L"}).place), "2.conf:2");
  EXPECT_EQ(graph.files.size(), 2U);
  EXPECT_EQ(makeGraph(bench.inspection, true).keys.size(), 3U);
}

TEST(Graph, MarksCircles) {
  const InspectionBench bench(
      {{"1.conf", "[A]\nJ=${config:A/K}\nK=${config:A/L}\nL=${config:A/K}\n"}});
  EXPECT_EQ(referencesOf(makeGraph(bench.inspection, false)), "J K\nK L!\nL K!\n");
}

TEST(Graph, MarksNothingThatMerelyLeadsBackIntoACircle) {
  const InspectionBench bench({{"1.conf",
                                "[A]\nJ=${config:A/L}${config:A/K}\nK=${config:A/L}\n"
                                "L=${config:A/M}\nM=${config:A/K}\n"}});
  EXPECT_EQ(referencesOf(makeGraph(bench.inspection, false)), "J L\nJ K\nK L!\nL M!\nM K!\n");
}

TEST(Graph, KnowsWhatIsNotSet) {
  const InspectionBench bench({{"1.conf", "[A]\nJ=${config:A/K}${config:A/L}\nK=1\nK=\n"}});
  const Graph graph = makeGraph(bench.inspection, false);
  const GraphKey& cleared = graph.keys.at({"A", "K"});
  EXPECT_FALSE(cleared.isSet);
  EXPECT_EQ(cleared.place, "");
  ASSERT_EQ(cleared.overridden.size(), 1U);
  EXPECT_EQ(bench.inner(cleared.overridden[0]), "1.conf:3");
  EXPECT_FALSE(graph.keys.at({"A", "L"}).isSet);
}

}  // namespace
}  // namespace Cradle::Inspect
