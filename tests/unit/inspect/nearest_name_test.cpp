// SPDX-License-Identifier: MIT
#include "inspect/nearest_name.h"

#include <array>

#include <gtest/gtest.h>

namespace Cradle::Inspect {
namespace {

constexpr std::array<std::string_view, 5> kNames{"Density", "Width", "Height", "Depth", "DPIX"};

TEST(NearestName, ForgivesOneErrorInThreeLetters) {
  EXPECT_EQ(nearestName("Densty", kNames), "Density");
  EXPECT_EQ(nearestName("Dennsity", kNames), "Density");
  EXPECT_EQ(nearestName("Densiyt", kNames), "Density");
  EXPECT_EQ(nearestName("Hieght", kNames), "Height");
  EXPECT_EQ(nearestName("Dansite", kNames), "Density");
  EXPECT_EQ(nearestName("Dpth", kNames), "Depth");
}

TEST(NearestName, CaresLittleForCase) {
  EXPECT_EQ(nearestName("density", kNames), "Density");
  EXPECT_EQ(nearestName("dpix", kNames), "DPIX");
}

TEST(NearestName, IsNoneWhereNoneIsNear) {
  EXPECT_EQ(nearestName("", kNames), "");
  EXPECT_EQ(nearestName("DPI", {}), "");
  EXPECT_EQ(nearestName("Colour", kNames), "");
  EXPECT_EQ(nearestName("Wi", kNames), "");
  EXPECT_EQ(nearestName("ytisneD", kNames), "");
  EXPECT_EQ(nearestName("DensityOfTheScreen", kNames), "");
}

TEST(NearestName, IsTheFirstOfSeveral) {
  constexpr std::array<std::string_view, 3> kAlike{"Aab", "Aac", "Aad"};
  EXPECT_EQ(nearestName("Aaa", kAlike), "Aab");
}

}  // namespace
}  // namespace Cradle::Inspect
