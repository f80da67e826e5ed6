#include "generators/generated_group.h"

#include <set>

#include <gtest/gtest.h>

namespace Cradle::Generators {
namespace {

TEST(GeneratedGroup, HasTheNamesThatOtherRunsLookFor) {
  EXPECT_EQ(GeneratedGroup::kName, "GeneratedConfig");
  EXPECT_EQ(GeneratedGroup::kUserId, "UserId");
  EXPECT_EQ(GeneratedGroup::kUser, "User");
  EXPECT_EQ(GeneratedGroup::kHome, "Home");
  EXPECT_EQ(GeneratedGroup::kInstance, "Instance");
  EXPECT_EQ(GeneratedGroup::kBaseUid, "BaseUid");
  EXPECT_EQ(GeneratedGroup::kPropertyPre, "PropertyPre");
  EXPECT_EQ(GeneratedGroup::kPropertyPost, "PropertyPost");
  EXPECT_EQ(GeneratedGroup::kDefaultLxc, "DefaultLxc");
  EXPECT_EQ(GeneratedGroup::kDefaultRo, "DefaultRo");
}

TEST(GeneratedGroup, CountsFiveFacts) {
  EXPECT_EQ(
      std::multiset<std::string_view>(GeneratedGroup::kFacts.begin(), GeneratedGroup::kFacts.end()),
      (std::multiset<std::string_view>{"BaseUid", "Home", "Instance", "User", "UserId"}));
}

}  // namespace
}  // namespace Cradle::Generators
