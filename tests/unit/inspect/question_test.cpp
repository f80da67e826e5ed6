// SPDX-License-Identifier: MIT
#include "inspect/question.h"

#include <array>
#include <string_view>

#include <gtest/gtest.h>

namespace Cradle::Inspect {
namespace {

TEST(Question, IsWhetherTheNearestNameWasMeant) {
  constexpr std::array<std::string_view, 2> kNames{"Width", "Height"};
  EXPECT_EQ(question("Widht", kNames), " (did you mean Width?)");
  EXPECT_EQ(question("Width", kNames), "");
  EXPECT_EQ(question("Colour", kNames), "");
}

TEST(Question, KnowsTheGroupsAndKeysOfTheTables) {
  EXPECT_EQ(questionForGroup("Dispaly"), " (did you mean Display?)");
  EXPECT_EQ(questionForKey("Display", "Densty"), " (did you mean Density?)");
  EXPECT_EQ(questionForKey("Config", "Density"), " (did you mean Display/Density?)");
  EXPECT_EQ(questionForKey("Config", "Hostname "),
            " (its name ends with a blank; did you mean Hostname?)");
  EXPECT_EQ(questionForKey("Config", "Nothing of the kind"), "");
  EXPECT_EQ(questionForKey("No group", "Nothing of the kind"), "");
  EXPECT_TRUE(isKnownGroup("Display"));
  EXPECT_FALSE(isKnownGroup("Dispaly"));
}

}  // namespace
}  // namespace Cradle::Inspect
