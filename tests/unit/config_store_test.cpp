// SPDX-License-Identifier: MIT
#include "config_store.h"

#include <span>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

namespace Cradle::Parser {
namespace {

class Store : public ::testing::Test {
 protected:
  void append(std::string_view group, std::string_view key, const char* text) {
    store_.append(group, key, ConfigValue(text));
  }
  void replace(std::string_view group, std::string_view key, const char* text) {
    store_.replace(group, key, ConfigValue(text));
  }

  // The values of a key between bars, "|a|b|", or "missing".
  std::string values(std::string_view group, std::string_view key) const {
    const std::span<const ConfigValue> found = store_.find(group, key);
    return found.empty() ? "missing" : shown(found);
  }

  // Everything, as "group/key|a|b| ".
  std::string all() const {
    std::string text;
    store_.visitInOrder(
        [&](std::string_view group, std::string_view key, std::span<const ConfigValue> values) {
          text += std::string(group) + "/" + std::string(key) + shown(values) + " ";
        });
    return text;
  }

  ConfigStore store_;

 private:
  static std::string shown(std::span<const ConfigValue> values) {
    std::string text = "|";
    for (const ConfigValue& value : values) {
      text += value.text() + "|";
    }
    return text;
  }
};

TEST_F(Store, BeginsEmpty) {
  EXPECT_EQ(all(), "");
  EXPECT_FALSE(store_.hasGroup(""));
  EXPECT_EQ(values("", ""), "missing");
}

TEST_F(Store, AppendsBehindTheEarlierValues) {
  append("G", "K", "1");
  append("G", "K", "2");
  append("G", "K", "1");
  EXPECT_EQ(values("G", "K"), "|1|2|1|");
}

TEST_F(Store, ReplacesAllEarlierValues) {
  append("G", "K", "1");
  append("G", "K", "2");
  replace("G", "K", "3");
  EXPECT_EQ(values("G", "K"), "|3|");
  replace("G", "L", "4");
  EXPECT_EQ(values("G", "L"), "|4|");
}

TEST_F(Store, KeepsEmptyValues) {
  append("G", "K", "");
  replace("G", "L", "");
  EXPECT_EQ(values("G", "K"), "||");
  EXPECT_EQ(values("G", "L"), "||");
}

TEST_F(Store, KeepsTheKeysOfDifferentGroupsApart) {
  append("A", "K", "1");
  append("B", "K", "2");
  append("", "K", "3");
  append("A", "", "4");
  EXPECT_EQ(values("A", "K"), "|1|");
  EXPECT_EQ(values("B", "K"), "|2|");
  EXPECT_EQ(values("", "K"), "|3|");
  EXPECT_EQ(values("A", ""), "|4|");
  EXPECT_EQ(values("B", ""), "missing");
}

TEST_F(Store, HasTheGroupsOfItsValues) {
  append("G", "K", "1");
  EXPECT_TRUE(store_.hasGroup("G"));
  for (const char* const other : {"", "g", "K", "G "}) {
    EXPECT_FALSE(store_.hasGroup(other)) << other;
  }
}

TEST_F(Store, MakesNothingExistByBeingAsked) {
  append("G", "K", "1");
  EXPECT_EQ(values("G", "L"), "missing");
  EXPECT_EQ(values("H", "K"), "missing");
  EXPECT_FALSE(store_.hasGroup("H"));
  store_.remove("I", "K");
  EXPECT_FALSE(store_.hasGroup("I"));
  EXPECT_EQ(all(), "G/K|1| ");
}

TEST_F(Store, RemovesAKeyWithAllItsValues) {
  append("G", "K", "1");
  append("G", "K", "2");
  append("G", "L", "3");
  store_.remove("G", "K");
  EXPECT_EQ(values("G", "K"), "missing");
  EXPECT_EQ(all(), "G/L|3| ");
  append("G", "K", "4");
  EXPECT_EQ(values("G", "K"), "|4|");
}

TEST_F(Store, HoldsManyGroupsOfManyKeys) {
  for (int i = 0; i < 300; ++i) {
    for (int j = 0; j < 300; ++j) {
      append(std::to_string(i), std::to_string(j), (std::to_string(i * j) + " of many").c_str());
    }
  }
  EXPECT_EQ(values("0", "299"), "|0 of many|");
  EXPECT_EQ(values("17", "23"), "|391 of many|");
  EXPECT_EQ(values("299", "299"), "|89401 of many|");
  EXPECT_EQ(values("299", "300"), "missing");
}

TEST_F(Store, KeepsNamesWhoseTextsAreGone) {
  {
    const std::string group = "a group with a long name";
    const std::string key = "a key with a long name";
    append(group, key, "1");
  }
  EXPECT_EQ(all(), "a group with a long name/a key with a long name|1| ");
}

TEST_F(Store, KeepsAGroupWhoseKeysWereRemoved) {
  append("G", "K", "1");
  store_.remove("G", "K");
  EXPECT_TRUE(store_.hasGroup("G"));
  EXPECT_EQ(all(), "");
}

TEST_F(Store, RemovesNothingWhereThereIsNoSuchKey) {
  append("G", "K", "1");
  store_.remove("G", "L");
  store_.remove("H", "K");
  store_.remove("G", "");
  EXPECT_EQ(all(), "G/K|1| ");
}

TEST_F(Store, VisitsGroupsAndKeysInByteOrder) {
  for (const char* const group : {"b", "a", "B", "", "a b", "10", "2"}) {
    append(group, "K", "1");
  }
  for (const char* const key : {"z", "Z", "K", "10", "9", ""}) {
    append("a", key, "2");
  }
  EXPECT_EQ(all(),
            "/K|1| 10/K|1| 2/K|1| B/K|1| a/|2| a/10|2| a/9|2| a/K|1|2| a/Z|2| a/z|2| a b/K|1| "
            "b/K|1| ");
}

}  // namespace
}  // namespace Cradle::Parser
