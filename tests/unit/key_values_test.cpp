// SPDX-License-Identifier: MIT
#include "key_values.h"

#include <string>

#include <gtest/gtest.h>

namespace Cradle::Parser {
namespace {

std::string shown(const KeyValues& values) {
  std::string text = "|";
  for (const ConfigValue& value : values.all()) {
    text += value.text() + "|";
  }
  return text;
}

TEST(KeyValues, BeginEmpty) {
  const KeyValues values;
  EXPECT_TRUE(values.empty());
  EXPECT_EQ(shown(values), "|");
}

TEST(KeyValues, AreKeptInTheOrderOfTheirAddition) {
  KeyValues values;
  values.append(ConfigValue("1"));
  EXPECT_EQ(shown(values), "|1|");
  EXPECT_FALSE(values.empty());
  values.append(ConfigValue("2"));
  values.append(ConfigValue("a text that needs memory of its own"));
  values.append(ConfigValue(""));
  EXPECT_EQ(shown(values), "|1|2|a text that needs memory of its own||");
}

TEST(KeyValues, CountAnEmptyValueAsOne) {
  KeyValues values;
  values.append(ConfigValue(""));
  EXPECT_FALSE(values.empty());
  EXPECT_EQ(shown(values), "||");
}

TEST(KeyValues, KeepTheReferencesOfEach) {
  KeyValues values;
  for (const char* const key : {"K", "L"}) {
    ConfigValue value;
    value.addReference("G", key, 0);
    values.append(std::move(value));
  }
  ASSERT_EQ(values.all().size(), 2U);
  EXPECT_EQ(values.all()[0].references()[0], ValueName("G", "K"));
  EXPECT_EQ(values.all()[1].references()[0], ValueName("G", "L"));
}

TEST(KeyValues, AreReplacedByOne) {
  KeyValues values;
  values.replace(ConfigValue("1"));
  EXPECT_EQ(shown(values), "|1|");
  values.append(ConfigValue("2"));
  values.replace(ConfigValue("3"));
  EXPECT_EQ(shown(values), "|3|");
  values.append(ConfigValue("4"));
  EXPECT_EQ(shown(values), "|3|4|");
}

TEST(KeyValues, AreDroppedTogether) {
  KeyValues values;
  values.append(ConfigValue("1"));
  values.append(ConfigValue("2"));
  values.clear();
  EXPECT_TRUE(values.empty());
  EXPECT_EQ(shown(values), "|");
  values.append(ConfigValue("3"));
  EXPECT_EQ(shown(values), "|3|");
}

}  // namespace
}  // namespace Cradle::Parser
