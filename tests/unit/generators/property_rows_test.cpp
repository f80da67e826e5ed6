// SPDX-License-Identifier: MIT
#include "generators/property_rows.h"

#include <map>
#include <set>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "generators/lxc_rows.h"
#include "support/row_coverage.h"
#include "support/row_rules.h"

namespace Cradle::Generators {
namespace {

using Testing::RowCoverage;

TEST(PropertyRows, KeepTheRulesOfATable) {
  for (const OutputRow& row : propertyRows()) {
    EXPECT_EQ(Testing::brokenRules(row), "") << Testing::nameOf(row);
  }
}

TEST(PropertyRows, NameEveryPropertyOnce) {
  std::set<std::string_view> names;
  for (const OutputRow& row : propertyRows()) {
    EXPECT_TRUE(row.key.empty() || names.insert(row.key).second) << row.key;
  }
}

TEST(PropertyRows, NamePropertiesThatAreReadOnlyOrPersistent) {
  for (const OutputRow& row : propertyRows()) {
    EXPECT_TRUE(row.key.empty() || row.key.starts_with("ro.") || row.key.starts_with("persist."))
        << row.key;
    EXPECT_EQ(row.key.find_first_of("= #"), std::string_view::npos) << row.key;
  }
}

TEST(PropertyRows, TakeTheirValuesFromKnownGroups) {
  for (const OutputRow& row : propertyRows()) {
    for (const std::string_view group : {row.source.group, row.when.source.group}) {
      EXPECT_THAT(group, ::testing::AnyOf("", "Config", "Features", "Audio", "Display", "Launchers",
                                          "Network", "Device"))
          << Testing::nameOf(row);
    }
  }
}

// A value has one type, whichever output reads it.
TEST(PropertyRows, AgreeOnTheTypesOfTheirValuesWithThoseOfTheContainer) {
  std::map<std::string, std::string_view> types;
  for (const auto rows : {propertyRows(), lxcRows()}) {
    for (const OutputRow& row : rows) {
      if (row.format != nullptr && !row.source.key.empty()) {
        const std::string_view first =
            types.emplace(Testing::nameOf(row.source), row.format->name).first->second;
        EXPECT_EQ(row.format->name, first) << Testing::nameOf(row);
      }
    }
  }
}

TEST(PropertyRows, AreAllCoveredByGoldenCases) {
  const RowCoverage coverage("property", "=");
  for (const OutputRow& row : propertyRows()) {
    EXPECT_EQ(coverage.missing(row), "") << Testing::nameOf(row);
  }
}

// Failures

TEST(PropertyRows, AreNoticedWithoutAGoldenCase) {
  const RowCoverage coverage("property", "=");
  EXPECT_EQ(coverage.missing({.key = "ro.new", .source = {"Config", "New"}, .format = &kInt}),
            "no case sets Config/New and has the line\n"
            "Config/New is written in less than three ways\n"
            "Config/New has no unusual value\n");
  EXPECT_EQ(coverage.missing({.key = "ro.new", .source = {"Config", "New"}, .format = &kText}),
            "no case sets Config/New and has the line\n");
  EXPECT_EQ(coverage.missing({.key = "ro.new", .format = &kUserId}), "no case has the line\n");
  EXPECT_EQ(coverage.missing({.key = "ro.new",
                              .format = &kFixed,
                              .condition = &kWhen,
                              .when = {{"Config", "New"}, "true"}}),
            "no case sets Config/New and has the line\n"
            "Config/New is written in less than three ways\n"
            "Config/New is not both true and false\n"
            "Config/New has no unusual value\n");
}

TEST(PropertyRows, AreNoticedUnderACommentThatNoGoldenCaseHas) {
  const RowCoverage coverage("property", "=");
  OutputRow row = propertyRows().front();
  EXPECT_EQ(coverage.missing(row), "");
  row.comment = "new";
  EXPECT_EQ(coverage.missing(row), "no case sets Config/UseIds and has the line\n");
}

}  // namespace
}  // namespace Cradle::Generators
