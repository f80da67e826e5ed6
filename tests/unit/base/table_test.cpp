// SPDX-License-Identifier: MIT
#include "base/table.h"

#include <array>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

namespace Cradle {
namespace {

struct Row {
  std::string_view name;
  int number;
};

constexpr std::array<Row, 4> kRows{{{"one", 1}, {"two", 2}, {"", 0}, {"two", 22}}};

TEST(FindRow, GivesTheRowWhoseMemberEqualsTheValue) {
  EXPECT_EQ(findRow(kRows, &Row::name, "one"), &kRows[0]);
  EXPECT_EQ(findRow(kRows, &Row::number, 22), &kRows[3]);
  EXPECT_EQ(findRow(kRows, &Row::name, std::string()), &kRows[2]);
}

TEST(FindRow, GivesTheFirstOfSeveralRows) {
  EXPECT_EQ(findRow(kRows, &Row::name, "two"), &kRows[1]);
}

TEST(FindRow, LooksIntoTheTableThatASpanShows) {
  const std::span<const Row> rows = std::span(kRows).subspan(2);
  EXPECT_EQ(findRow(rows, &Row::name, "two"), &kRows[3]);
}

TEST(FindRow, GivesNothingWhereNoRowMatches) {
  for (const char* const name : {"three", "on", "one ", "One"}) {
    EXPECT_EQ(findRow(kRows, &Row::name, name), nullptr) << name;
  }
  EXPECT_EQ(findRow(std::vector<Row>(), &Row::number, 0), nullptr);
}

}  // namespace
}  // namespace Cradle
