// SPDX-License-Identifier: MIT
#include "generators/lxc_rows.h"

#include <set>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "mount_entry.h"
#include "support/row_coverage.h"
#include "support/row_rules.h"

namespace Cradle::Generators {
namespace {

using Testing::RowCoverage;

constexpr std::string_view kMountEntry = "lxc.mount.entry";

TEST(LxcRows, KeepTheRulesOfATable) {
  for (const OutputRow& row : lxcRows()) {
    EXPECT_EQ(Testing::brokenRules(row), "") << Testing::nameOf(row);
  }
}

TEST(LxcRows, NameKeysOfTheContainer) {
  for (const OutputRow& row : lxcRows()) {
    EXPECT_TRUE(row.key.starts_with("lxc.")) << Testing::nameOf(row);
  }
}

TEST(LxcRows, WriteNoLineTwice) {
  std::set<std::string> lines;
  for (const OutputRow& row : lxcRows()) {
    EXPECT_TRUE(lines
                    .insert(Testing::nameOf(row) + Testing::nameOf(row.when.source) +
                            std::string(row.when.text))
                    .second)
        << Testing::nameOf(row);
  }
}

TEST(LxcRows, TakeTheirValuesFromKnownGroups) {
  for (const OutputRow& row : lxcRows()) {
    for (const std::string_view group : {row.source.group, row.when.source.group}) {
      EXPECT_THAT(group, ::testing::AnyOf("", "Config", "Devices", "Features", "Network"))
          << Testing::nameOf(row);
    }
  }
}

TEST(LxcRows, MakeMountEntriesThatAreValidOfAPath) {
  const Testing::LogCapture log;
  for (const OutputRow& row : lxcRows()) {
    const bool hasText = !row.suffix.empty() || row.format == &kFixed;
    if (row.key == kMountEntry && hasText) {
      const std::string source(row.format == &kFixed ? row.text : "/path");
      EXPECT_TRUE(Parser::validateMountEntry(source + std::string(row.suffix)))
          << Testing::nameOf(row);
    }
  }
  EXPECT_EQ(log.text(), "");
}

TEST(LxcRows, AreAllCoveredByGoldenCases) {
  const RowCoverage coverage("lxc", " = ");
  for (const OutputRow& row : lxcRows()) {
    EXPECT_EQ(coverage.missing(row), "") << Testing::nameOf(row);
  }
}

// Failures

TEST(LxcRows, AreNoticedWithoutAGoldenCase) {
  const RowCoverage coverage("lxc", " = ");
  EXPECT_EQ(coverage.missing({.key = kMountEntry,
                              .source = {"Config", "New"},
                              .format = &kText,
                              .suffix = " new none bind 0 0"}),
            "no case sets Config/New and has the line\n");
  EXPECT_EQ(coverage.missing({.key = "lxc.new",
                              .format = &kFixed,
                              .condition = &kWhen,
                              .when = {{"Network", "NetConfig"}, "bridge"},
                              .text = "new"}),
            "no case sets Network/NetConfig and has the line\n");
}

TEST(LxcRows, AreNoticedWithATextThatNoGoldenCaseHas) {
  const RowCoverage coverage("lxc", " = ");
  OutputRow row = lxcRows().front();
  EXPECT_EQ(coverage.missing(row), "");
  row.suffix = " new";
  EXPECT_EQ(coverage.missing(row), "no case sets Config/Arch and has the line\n");
}

}  // namespace
}  // namespace Cradle::Generators
