// SPDX-License-Identifier: MIT
#include "generators/key_descriptions.h"

#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "generators/key_reference.h"
#include "support/row_rules.h"

namespace Cradle::Generators {
namespace {

using Testing::nameOf;

std::multiset<std::string> describedKeys() {
  std::multiset<std::string> keys;
  for (const KeyDescription& description : keyDescriptions()) {
    keys.insert(nameOf(description.name));
  }
  return keys;
}

TEST(KeyDescriptions, AreThereOnceForEveryKeyThatIsReadAndForNoOther) {
  std::multiset<std::string> keys;
  for (const ConfigKey& name : readKeys()) {
    keys.insert(nameOf(name));
  }
  EXPECT_EQ(describedKeys(), keys);
}

TEST(KeyDescriptions, StandTogetherInTheOrderOfTheGroups) {
  std::vector<std::string_view> groups;
  for (const KeyDescription& description : keyDescriptions()) {
    if (groups.empty() || groups.back() != description.name.group) {
      groups.push_back(description.name.group);
    }
  }
  std::vector<std::string_view> described;
  for (const GroupDescription& description : groupDescriptions()) {
    described.push_back(description.group);
  }
  EXPECT_EQ(groups, described);
}

// What stands in a manual as it is: sentences of plain ASCII without white space at their ends.
bool isProse(std::string_view text) {
  return !text.empty() && text.front() != ' ' && text.ends_with('.') &&
         text.find("  ") == text.npos && text.find_first_of("\\\t\n") == text.npos;
}

TEST(KeyDescriptions, AreSentences) {
  for (const KeyDescription& description : keyDescriptions()) {
    EXPECT_TRUE(isProse(description.meaning)) << nameOf(description.name);
    EXPECT_FALSE(description.absent.ends_with('.')) << nameOf(description.name);
  }
  for (const GroupDescription& description : groupDescriptions()) {
    EXPECT_TRUE(isProse(description.meaning)) << description.group;
  }
}

TEST(KeyDescriptions, SayEachThingOnce) {
  std::set<std::string_view> meanings;
  for (const KeyDescription& description : keyDescriptions()) {
    EXPECT_TRUE(meanings.insert(description.meaning).second) << description.meaning;
  }
}

}  // namespace
}  // namespace Cradle::Generators
