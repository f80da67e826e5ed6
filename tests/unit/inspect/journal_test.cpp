// SPDX-License-Identifier: MIT
#include "inspect/journal.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace Cradle::Inspect {
namespace {

TEST(Journal, FindsAKeyOfAGroup) {
  Journal journal;
  journal.files.push_back({.path = "/a.conf"});
  journal.groups["G"]["K"].push_back({.place = {0, 3}, .raw = "x", .parts = {}});
  ASSERT_NE(journal.find("G", "K"), nullptr);
  EXPECT_EQ(journal.nameOf(journal.find("G", "K")->front().place), "/a.conf:3");
  EXPECT_EQ(journal.find("G", "L"), nullptr);
  EXPECT_EQ(journal.find("H", "K"), nullptr);
}

TEST(Journal, KeepsTheValuesBehindTheLastClearing) {
  const History history{
      {{0, 1}, "a", {{.raw = "a"}}},
      {{0, 2}, "", {}},
      {{0, 3}, "b;$;c", {{.raw = "b"}, {.raw = "$", .fate = Fate::StrayDollar}, {.raw = "c"}}}};
  const std::vector<KeptValue> kept = keptValues(history);
  ASSERT_EQ(kept.size(), 2U);
  EXPECT_EQ(kept[0].part->raw, "b");
  EXPECT_EQ(kept[1].part->raw, "c");
  EXPECT_EQ(kept[1].assignment->place.line, 3U);
}

TEST(Journal, KnowsWhichTextsAreNotFinal) {
  Part part{.raw = "x"};
  EXPECT_FALSE(part.awaitsCommand());
  part.substitutions.push_back({"USER", Outcome::Text, "u"});
  EXPECT_FALSE(part.awaitsCommand());
  part.substitutions.push_back({"system:x", Outcome::NotRun, ""});
  EXPECT_TRUE(part.awaitsCommand());
}

}  // namespace
}  // namespace Cradle::Inspect
