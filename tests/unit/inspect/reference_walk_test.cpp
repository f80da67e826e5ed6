// SPDX-License-Identifier: MIT
#include "inspect/reference_walk.h"

#include <string>

#include <gtest/gtest.h>

#include "base/text.h"
#include "support/journal_bench.h"

namespace Cradle::Inspect {
namespace {

using Testing::JournalBench;

// "DEPTH KEY" of each step from the first value of A, then how the walk ends.
std::string walked(const JournalBench& bench) {
  const Part& part = bench.history("G", "A").front().parts.front();
  const ReferenceWalk walk = followReferences(bench.journal, "G/A", part);
  std::string text;
  for (const ReferenceStep& step : walk.steps) {
    text += std::to_string(step.depth) + " " + step.name->second +
            (step.value.part == nullptr ? " missing" : " = " + step.value.part->raw) + "\n";
  }
  switch (walk.end) {
    case ReferenceWalk::End::Circle:
      return text + join(walk.circle, " -> ");
    case ReferenceWalk::End::TooDeep:
      return text + "too deep";
    default:
      return text;
  }
}

// Whether the parser, too, resolves the first value of A.
bool resolves(const JournalBench& bench) {
  const Testing::LogCapture log;
  std::string text;
  bench.parser.resolve(bench.history("G", "A").front().parts.front().value, text);
  return log.text().empty();
}

TEST(ReferenceWalk, FollowsTheLastValueOfEachKey) {
  const JournalBench bench({"[G]\nA=${config:G/B}${config:G/D}\nB=${config:G/C}\nC=x;y\nD=z\n"});
  EXPECT_EQ(walked(bench), "1 B = ${config:G/C}\n2 C = y\n1 D = z\n");
  EXPECT_TRUE(resolves(bench));
}

TEST(ReferenceWalk, GoesNowhereFromPlainText) {
  EXPECT_EQ(walked(JournalBench({"[G]\nA=x\n"})), "");
}

TEST(ReferenceWalk, LetsAListReferToItsOwnEnd) {
  const JournalBench bench({"[G]\nA=<${config:G/A}>;x\n"});
  EXPECT_EQ(walked(bench), "1 A = x\n");
  EXPECT_TRUE(resolves(bench));
}

TEST(ReferenceWalk, PassesOverClearingsAndDiscardedValues) {
  const JournalBench bench({"[G]\nA=${config:G/B}\nB=x\nB=\n", "[G]\nA=${config:G/B}\n"});
  EXPECT_EQ(walked(bench), "1 B missing\n");
  EXPECT_EQ(walked(JournalBench({"[G]\nA=${config:G/B}\nB=x\nB=${nope}\n"})), "1 B = x\n");
  EXPECT_EQ(walked(JournalBench({"[G]\nA=${config:G/B}\nB=${nope}\n"})), "1 B missing\n");
  EXPECT_EQ(walked(JournalBench({"[G]\nA=${config:G/B}\n"})), "1 B missing\n");
}

// Failures

TEST(ReferenceWalk, NamesACircle) {
  const JournalBench bench({"[G]\nA=${config:G/B}\nB=${config:G/C}\nC=${config:G/B}\n"});
  EXPECT_EQ(walked(bench),
            "1 B = ${config:G/C}\n2 C = ${config:G/B}\n3 B = ${config:G/C}\nG/B -> G/C -> G/B");
  EXPECT_FALSE(resolves(bench));
  EXPECT_EQ(walked(JournalBench({"[G]\nA=${config:G/A}\n"})), "1 A = ${config:G/A}\nG/A -> G/A");
}

TEST(ReferenceWalk, EndsAtTheFirstCircle) {
  EXPECT_EQ(walked(JournalBench({"[G]\nA=${config:G/A}${config:G/B}\nB=x\n"})),
            "1 A = ${config:G/A}${config:G/B}\nG/A -> G/A");
}

// A chain of so many values, the last one plain.
std::string chain(int count) {
  std::string text = "[G]\nA=${config:G/K1}\n";
  for (int i = 1; i < count - 1; ++i) {
    text += "K" + std::to_string(i) + "=${config:G/K" + std::to_string(i + 1) + "}\n";
  }
  return text + "K" + std::to_string(count - 1) + "=x\n";
}

TEST(ReferenceWalk, EndsWhereAResolutionDoes) {
  const JournalBench longest({chain(33)});
  EXPECT_TRUE(walked(longest).ends_with("32 K32 = x\n"));
  EXPECT_TRUE(resolves(longest));
  const JournalBench tooLong({chain(34)});
  EXPECT_TRUE(walked(tooLong).ends_with("33 K33 = x\ntoo deep"));
  EXPECT_FALSE(resolves(tooLong));
  EXPECT_TRUE(walked(JournalBench({chain(40)})).ends_with("33 K33 = ${config:G/K34}\ntoo deep"));
}

}  // namespace
}  // namespace Cradle::Inspect
