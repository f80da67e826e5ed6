// SPDX-License-Identifier: MIT
#include "inspect/key_table.h"

#include <gtest/gtest.h>

namespace Cradle::Inspect {
namespace {

TEST(KeyTable, FindsEveryKnownKeyAndNoOther) {
  for (const Generators::KeyReference& key : knownKeys()) {
    EXPECT_EQ(findKey(key.name.group, key.name.key), &key);
  }
  EXPECT_EQ(findKey("Config", "Nope"), nullptr);
  EXPECT_EQ(findKey("Nope", "Arch"), nullptr);
  EXPECT_EQ(findKey("zzz", "zzz"), nullptr);
}

TEST(KeyTable, KnowsOfWhichKeysOneValueCounts) {
  EXPECT_TRUE(takesOne("Config", "Arch"));
  EXPECT_FALSE(takesOne("Config", "Mounts"));
  EXPECT_FALSE(takesOne("Config", "Nope"));
}

TEST(KeyPattern, NamesAKeyOrAGroup) {
  const KeyPattern key("A/B");
  EXPECT_TRUE(key.matches("A", "B"));
  EXPECT_FALSE(key.matches("A", "C"));
  EXPECT_FALSE(key.matches("B", "B"));
  const KeyPattern group("A");
  EXPECT_TRUE(group.matches("A", "B"));
  EXPECT_TRUE(group.matches("A", "C"));
  EXPECT_FALSE(group.matches("B", "B"));
  EXPECT_TRUE(KeyPattern("A/").matches("A", "B"));
}

TEST(KeyPattern, NamesAKeyBehindARefusedLine) {
  const KeyPattern key("[A/B]/C");
  EXPECT_TRUE(key.matches("[A/B]", "C"));
  EXPECT_FALSE(key.matches("[A", "B]/C"));
  EXPECT_TRUE(KeyPattern("[A/B]").matches("[A/B]", "C"));
  EXPECT_TRUE(KeyPattern("A/B/C").matches("A", "B/C"));
}

}  // namespace
}  // namespace Cradle::Inspect
