// SPDX-License-Identifier: MIT
#include "config_parser.h"

#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

#include "support/config_text.h"
#include "support/dconf_database.h"
#include "support/log_capture.h"
#include "support/users.h"
#include "template_context.h"

namespace Cradle::Parser {
namespace {

using Testing::DconfDatabase;
using Testing::loadText;
using Testing::LogCapture;
using Testing::unusedUserId;
using Testing::valuesOf;

static_assert(!std::is_copy_constructible_v<ConfigParser>);
static_assert(!std::is_copy_assignable_v<ConfigParser>);

class Parser : public ::testing::Test {
 protected:
  // Every entry as "group/key|a|b| ".
  std::string entries() const {
    std::string text;
    parser_.forEachEntry(
        [&](std::string_view group, std::string_view key, std::span<const ConfigValue> values) {
          text += std::string(group) + "/" + std::string(key) + "|";
          for (const ConfigValue& value : values) {
            std::string resolved;
            parser_.resolve(value, resolved);
            text += resolved + "|";
          }
          text += " ";
        });
    return text;
  }

  LogCapture log_;
  ConfigParser parser_{-1};
};

TEST_F(Parser, BeginsEmpty) {
  EXPECT_EQ(entries(), "");
  EXPECT_FALSE(parser_.hasGroup(""));
  EXPECT_FALSE(parser_.hasKey("", ""));
  EXPECT_EQ(log_.text(), "");
}

TEST_F(Parser, HasTheGroupsAndKeysOfItsValues) {
  ASSERT_TRUE(loadText(parser_, "Top=0\n[G]\nK=1\n[Empty]\n"));
  EXPECT_TRUE(parser_.hasGroup("G"));
  EXPECT_TRUE(parser_.hasGroup(""));
  EXPECT_FALSE(parser_.hasGroup("Empty"));
  EXPECT_FALSE(parser_.hasGroup("g"));
  EXPECT_TRUE(parser_.hasKey("G", "K"));
  EXPECT_TRUE(parser_.hasValue("G", "K"));
  EXPECT_TRUE(parser_.hasKey("", "Top"));
  for (const ValueName& other : {ValueName("G", "L"), ValueName("H", "K"), ValueName("", "K")}) {
    EXPECT_FALSE(parser_.hasKey(other.first, other.second)) << other.first << other.second;
    EXPECT_FALSE(parser_.hasValue(other.first, other.second)) << other.first << other.second;
  }
  EXPECT_EQ(log_.text(), "");
}

TEST_F(Parser, MakesNothingExistByBeingAsked) {
  EXPECT_FALSE(parser_.hasKey("G", "K"));
  EXPECT_FALSE(parser_.hasKey("G", "K"));
  EXPECT_FALSE(parser_.hasGroup("G"));
  EXPECT_EQ(entries(), "");
}

TEST_F(Parser, RemovesAKeyButNotItsGroup) {
  ASSERT_TRUE(loadText(parser_, "[G]\nK=1;2\n"));
  parser_.removeKey("G", "K");
  EXPECT_FALSE(parser_.hasKey("G", "K"));
  EXPECT_TRUE(parser_.hasGroup("G"));
  EXPECT_EQ(entries(), "");
}

TEST_F(Parser, RemovesNothingWhereThereIsNoSuchKey) {
  ASSERT_TRUE(loadText(parser_, "[G]\nK=1\n"));
  parser_.removeKey("G", "L");
  parser_.removeKey("H", "K");
  EXPECT_EQ(entries(), "G/K|1| ");
  EXPECT_FALSE(parser_.hasGroup("H"));
}

TEST_F(Parser, EnumeratesGroupsAndTheirKeysInByteOrder) {
  ASSERT_TRUE(loadText(parser_, "[b]\nK=1\n[a]\nz=2\nZ=3;4\n10=5\n9=6\n[B]\nK=7\n[]\nTop=8\n"));
  ASSERT_TRUE(loadText(parser_, "[b]\nA=9\n[a]\nZ=0\n"));
  EXPECT_EQ(entries(), "/Top|8| B/K|7| a/10|5| a/9|6| a/Z|3|4|0| a/z|2| b/A|9| b/K|1| ");
}

TEST_F(Parser, EnumeratesValuesWithoutFollowingTheirReferences) {
  ASSERT_TRUE(loadText(parser_, "[G]\nK=a;<${config:G/K}>;c\n"));
  std::string texts;
  parser_.forEachEntry(
      [&](std::string_view, std::string_view, std::span<const ConfigValue> values) {
        for (const ConfigValue& value : values) {
          texts += value.text() + "|";
        }
      });
  EXPECT_EQ(texts, "a|<>|c|");
  EXPECT_EQ(log_.text(), "");
}

TEST_F(Parser, EnumeratesValuesThatResolveToNothingToo) {
  ASSERT_TRUE(loadText(parser_, "[G]\nK=a;<${config:X/Y}>;${config:X/Missing};c\n[X]\nY=y\n"));
  EXPECT_EQ(entries(), "G/K|a|<y>||c| X/Y|y| ");
}

TEST_F(Parser, ExpandsTheTemplatesAddedBeforeALoad) {
  parser_.addTemplate("HOME", "/home/u");
  parser_.addTemplate("HOME", "/home/other");
  ASSERT_TRUE(loadText(parser_, "[G]\nK=${HOME}/x\n"));
  EXPECT_EQ(valuesOf(parser_, "G", "K"), "|/home/u/x|");
}

TEST_F(Parser, ReadsTheDconfDatabaseOfItsUser) {
  const DconfDatabase database("[cradle]\nname='value'\n");
  const auto nameFor = [&](std::int32_t userId) {
    return database.visibleTo([&] {
      ConfigParser parser(userId);
      loadText(parser, "[G]\nK=${dconf:/cradle/name}\n");
      return valuesOf(parser, "G", "K");
    });
  };
  EXPECT_EQ(nameFor(-1), "|value|");
  EXPECT_EQ(nameFor(static_cast<std::int32_t>(unusedUserId())), "missing");
}

TEST_F(Parser, TakesOnlyDeclaredKeysOnceThereIsOne) {
  ASSERT_TRUE(loadText(parser_, "[G]\nBefore=1\n"));
  parser_.addKnownKey("G", "K", SingleValue);
  ASSERT_TRUE(loadText(parser_, "[G]\nK=1\nL=2\n[H]\nK=3\n"));
  EXPECT_EQ(entries(), "G/Before|1| G/K|1| ");
  EXPECT_EQ(log_.text(), "");
}

TEST_F(Parser, KeepsTheFirstModeOfADeclaredKey) {
  parser_.addKnownKey("G", "K", SingleValue);
  parser_.addKnownKey("G", "K", ValueList);
  ASSERT_TRUE(loadText(parser_, "[G]\nK=1;2\n"));
  EXPECT_EQ(valuesOf(parser_, "G", "K"), "|2|");
}

TEST_F(Parser, TakesValuesAsFilesGiveThem) {
  ASSERT_TRUE(loadText(parser_, "[G]\nK=1\n"));
  parser_.addValue("G", "K", ConfigValue("2;3"));
  EXPECT_EQ(valuesOf(parser_, "G", "K"), "|1|2;3|");
}

TEST_F(Parser, ShowsWhatItsTemplatesDrawOn) {
  parser_.addTemplate("NAME", "value");
  ASSERT_NE(parser_.templates().find("NAME"), nullptr);
  EXPECT_EQ(*parser_.templates().find("NAME"), "value");
}

// Failures

TEST_F(Parser, WarnsWhenAskedForAKeyThatIsNotDeclared) {
  ASSERT_TRUE(loadText(parser_, "[G]\nOld=1\n"));
  parser_.addKnownKey("G", "K", SingleValue);
  EXPECT_TRUE(parser_.hasKey("G", "Old"));
  EXPECT_FALSE(parser_.hasKey("H", "New"));
  EXPECT_EQ(log_.text(),
            "WARNING: G/Old has not been added to the parser\n"
            "WARNING: H/New has not been added to the parser\n");
}

TEST_F(Parser, DoesNotWarnForDeclaredKeysNorAboutValuesAndGroups) {
  parser_.addKnownKey("G", "K", SingleValue);
  EXPECT_FALSE(parser_.hasKey("G", "K"));
  EXPECT_FALSE(parser_.hasValue("G", "Unknown"));
  EXPECT_FALSE(parser_.hasGroup("Unknown"));
  EXPECT_EQ(log_.text(), "");
}

}  // namespace
}  // namespace Cradle::Parser
