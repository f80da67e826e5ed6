// SPDX-License-Identifier: MIT
#include "known_keys.h"

#include <optional>
#include <string>

#include <gtest/gtest.h>

namespace Cradle::Parser {
namespace {

TEST(KnownKeys, AreNumberedByTheirMode) {
  EXPECT_EQ(static_cast<std::uint32_t>(SingleValue), 0U);
  EXPECT_EQ(static_cast<std::uint32_t>(ValueList), 1U);
}

TEST(KnownKeys, AreEmptyUntilOneIsAdded) {
  KnownKeys keys;
  EXPECT_TRUE(keys.empty());
  EXPECT_EQ(keys.mode("", ""), std::nullopt);
  keys.add("", "", SingleValue);
  EXPECT_FALSE(keys.empty());
  EXPECT_EQ(keys.mode("", ""), SingleValue);
}

TEST(KnownKeys, KeepTheModeOfEach) {
  KnownKeys keys;
  keys.add("G", "Single", SingleValue);
  keys.add("G", "List", ValueList);
  keys.add("G", "Neither", 7);
  EXPECT_EQ(keys.mode("G", "Single"), SingleValue);
  EXPECT_EQ(keys.mode("G", "List"), ValueList);
  EXPECT_EQ(keys.mode("G", "Neither"), 7U);
}

TEST(KnownKeys, AreKnownByTheExactPairOfGroupAndKey) {
  KnownKeys keys;
  keys.add("Group", "Key", ValueList);
  keys.add("Key", "Other", SingleValue);
  const ValueName others[] = {{"Key", "Group"},  {"Group", "Other"}, {"group", "Key"},
                              {"Group", "Key "}, {"", "GroupKey"},   {"GroupKey", ""},
                              {"Group", ""},     {"", "Key"},        {"Key", "Key"}};
  for (const auto& [group, key] : others) {
    EXPECT_EQ(keys.mode(group, key), std::nullopt) << group << "/" << key;
  }
}

TEST(KnownKeys, KeepTheFirstModeGiven) {
  KnownKeys keys;
  keys.add("G", "K", SingleValue);
  keys.add("G", "K", ValueList);
  EXPECT_EQ(keys.mode("G", "K"), SingleValue);
}

TEST(KnownKeys, KeepCopiesOfTheNames) {
  KnownKeys keys;
  std::string group = "a group name that is longer than a short string";
  const std::string copy = group;
  keys.add(group, group, ValueList);
  group.assign(group.size(), 'x');
  EXPECT_EQ(keys.mode(copy, copy), ValueList);
  EXPECT_EQ(keys.mode(group, group), std::nullopt);
}

TEST(KnownKeys, CanBeMany) {
  KnownKeys keys;
  for (std::uint32_t i = 0; i < 1000; ++i) {
    keys.add("G" + std::to_string(i % 10), std::to_string(i), i);
  }
  for (std::uint32_t i = 0; i < 1000; ++i) {
    EXPECT_EQ(keys.mode("G" + std::to_string(i % 10), std::to_string(i)), i);
  }
}

}  // namespace
}  // namespace Cradle::Parser
