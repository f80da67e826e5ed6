// SPDX-License-Identifier: MIT
#include "inspect/nearest_name.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <random>
#include <string>

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

// Names by chance, against the definition of the distance worked out without any short cut

// Replaced, missing and superfluous letters, and neighbours that have changed places.
std::size_t errorsBetween(std::string_view left, std::string_view right) {
  if (left.empty() || right.empty()) {
    return left.size() + right.size();
  }
  const auto lower = [](char letter) { return std::tolower(static_cast<unsigned char>(letter)); };
  const auto same = [&](std::size_t i, std::size_t j) {
    return lower(left[left.size() - i]) == lower(right[right.size() - j]);
  };
  const auto rest = [](std::string_view name, std::size_t cut) {
    return name.substr(0, name.size() - cut);
  };
  std::size_t errors = errorsBetween(rest(left, 1), rest(right, 1)) + (same(1, 1) ? 0 : 1);
  errors = std::min(errors, errorsBetween(rest(left, 1), right) + 1);
  errors = std::min(errors, errorsBetween(left, rest(right, 1)) + 1);
  if (left.size() > 1 && right.size() > 1 && same(1, 2) && same(2, 1)) {
    errors = std::min(errors, errorsBetween(rest(left, 2), rest(right, 2)) + 1);
  }
  return errors;
}

TEST(NearestName, IsTheFirstWithTheFewestErrors) {
  std::mt19937 random(1);
  const auto someName = [&] {
    std::string name(random() % 7, ' ');
    std::generate(name.begin(), name.end(), [&] { return "abcA"[random() % 4]; });
    return name;
  };
  for (int round = 0; round < 3000; ++round) {
    const std::string name = someName();
    const std::array<std::string, 3> candidates{someName(), someName(), someName()};
    std::string_view nearest;
    std::size_t fewest = name.size() / 3 + 1;
    for (const std::string& candidate : candidates) {
      const std::size_t errors = errorsBetween(name, candidate);
      nearest = errors < fewest ? std::string_view(candidate) : nearest;
      fewest = std::min(fewest, errors);
    }
    const std::array<std::string_view, 3> views{candidates[0], candidates[1], candidates[2]};
    EXPECT_EQ(nearestName(name, views), nearest)
        << name << ": " << views[0] << ", " << views[1] << ", " << views[2];
  }
}

}  // namespace
}  // namespace Cradle::Inspect
