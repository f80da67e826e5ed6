// SPDX-License-Identifier: MIT
#include "inspect/unified_diff.h"

#include <cstdio>
#include <random>
#include <string>

#include <gtest/gtest.h>

#include "base/text.h"

namespace Cradle::Inspect {
namespace {

std::string diff(std::string_view before, std::string_view after) {
  return join(unifiedDiff(before, after, "old", "new"), "\n");
}

// The texts before and after of a result that shows every line.
std::string sideOf(const DiffLines& lines, char sign) {
  std::string text;
  for (std::size_t i = 3; i < lines.size(); ++i) {
    if (lines[i].front() == ' ' || lines[i].front() == sign) {
      text += lines[i].substr(1) + "\n";
    }
  }
  return text;
}

std::string numbers(int from, int to) {
  std::string text;
  for (int i = from; i <= to; ++i) {
    text += std::to_string(i) + "\n";
  }
  return text;
}

TEST(UnifiedDiff, IsNothingForEqualTexts) {
  EXPECT_EQ(diff("", ""), "");
  EXPECT_EQ(diff("a\nb", "a\nb"), "");
}

TEST(UnifiedDiff, ShowsAChangeWithTheLinesAroundIt) {
  EXPECT_EQ(diff(numbers(1, 9), numbers(1, 4) + "x\n" + numbers(6, 9)),
            "--- old\n+++ new\n@@ -2,7 +2,7 @@\n 2\n 3\n 4\n-5\n+x\n 6\n 7\n 8");
}

TEST(UnifiedDiff, CountsNothingFromTheLineBefore) {
  EXPECT_EQ(diff("", "a\n"), "--- old\n+++ new\n@@ -0,0 +1,1 @@\n+a");
  EXPECT_EQ(diff("a\n", ""), "--- old\n+++ new\n@@ -1,1 +0,0 @@\n-a");
}

TEST(UnifiedDiff, JoinsChangesThatStandNear) {
  const std::string before = numbers(1, 30);
  std::string after = before;
  after.replace(after.find("5\n"), 1, "x");
  after.replace(after.find("12\n"), 2, "y");
  EXPECT_EQ(diff(before, after),
            "--- old\n+++ new\n@@ -2,14 +2,14 @@\n 2\n 3\n 4\n-5\n+x\n 6\n 7\n 8\n 9\n 10\n 11\n"
            "-12\n+y\n 13\n 14\n 15");
}

TEST(UnifiedDiff, PartsChangesThatStandFarApart) {
  const std::string before = numbers(1, 30);
  std::string after = before;
  after.replace(after.find("5\n"), 1, "x");
  after.replace(after.find("20\n"), 2, "y");
  const std::string text = diff(before, after);
  EXPECT_NE(text.find("@@ -2,7 +2,7 @@"), std::string::npos);
  EXPECT_NE(text.find("@@ -17,7 +17,7 @@"), std::string::npos);
}

TEST(UnifiedDiff, PartsChangesThatHaveOneLineMoreBetweenThemThanBothShow) {
  const std::string before = numbers(1, 30);
  std::string after = before;
  after.replace(after.find("5\n"), 1, "x");
  after.replace(after.find("13\n"), 2, "y");
  const std::string text = diff(before, after);
  EXPECT_NE(text.find("@@ -2,7 +2,7 @@"), std::string::npos) << text;
  EXPECT_NE(text.find("@@ -10,7 +10,7 @@"), std::string::npos) << text;
}

TEST(UnifiedDiff, TellsWhereALineFeedIsMissing) {
  EXPECT_EQ(diff("a", "a\n"),
            "--- old\n+++ new\n@@ -1,1 +1,1 @@\n-a\n\\ No newline at end of file\n+a");
}

// What a result makes of the text before, as "patch" would.
std::string patched(std::string_view before, const DiffLines& lines) {
  const auto former = split(before, '\n', EmptyParts::DropTrailing);
  std::string after;
  std::size_t next = 0;
  const auto keepUpTo = [&](std::size_t end) {
    for (; next < end; ++next) {
      after.append(former[next]).append("\n");
    }
  };
  for (std::size_t i = 2; i < lines.size(); ++i) {
    const std::string_view line = std::string_view(lines[i]).substr(1);
    std::size_t first = 0;
    std::size_t count = 0;
    if (std::sscanf(lines[i].c_str(), "@@ -%zu,%zu ", &first, &count) == 2) {
      keepUpTo(count == 0 ? first : first - 1);
    } else if (lines[i].front() == '+') {
      after.append(line).append("\n");
    } else {
      EXPECT_EQ(former.at(next), line);
      keepUpTo(next + (lines[i].front() == ' ' ? 1 : 0));
      next += lines[i].front() == '-' ? 1 : 0;
    }
  }
  keepUpTo(former.size());
  return after;
}

TEST(UnifiedDiff, LeadsFromOneTextToTheOther) {
  std::mt19937 random(1);
  for (int round = 0; round < 500; ++round) {
    std::string texts[2];
    for (std::string& text : texts) {
      for (auto i = random() % 25; i > 0; --i) {
        text += std::string(1, static_cast<char>('a' + random() % 3)) + "\n";
      }
    }
    const DiffLines lines = unifiedDiff(texts[0], texts[1], "old", "new");
    EXPECT_EQ(patched(texts[0], lines), texts[1]) << join(lines, "\n");
  }
}

TEST(UnifiedDiff, TellsTextsApartThatHaveNothingInCommon) {
  const std::string before = numbers(1, 1500);
  const std::string after = numbers(2001, 3500);
  const DiffLines lines = unifiedDiff(before, after, "old", "new");
  EXPECT_EQ(sideOf(lines, '-'), before);
  EXPECT_EQ(sideOf(lines, '+'), after);
}

}  // namespace
}  // namespace Cradle::Inspect
