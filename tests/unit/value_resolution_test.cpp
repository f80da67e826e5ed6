// SPDX-License-Identifier: MIT
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "config_parser.h"
#include "support/config_text.h"
#include "support/log_capture.h"

namespace Cradle::Parser {
namespace {

using Testing::loadText;
using Testing::LogCapture;

constexpr const char* kTooDeep = "ERROR: Max depth reached, possibly circular reference.\n";

class ValueResolution : public ::testing::Test {
 protected:
  // The text of the last value of a key of the group "G".
  std::string textOf(std::string_view key) const {
    std::string text = "untouched";
    parser_.getValue("G", key, text);
    return text;
  }

  bool load(const std::string& entries) { return loadText(parser_, "[G]\n" + entries); }

  LogCapture log_;
  ConfigParser parser_{-1};
};

struct Resolution {
  const char* entries;
  const char* text;  // of the key A
};

constexpr Resolution kResolutions[] = {
    {"A=plain\n", "plain"},
    {"A=x${config:G/B}y\nB=1\n", "x1y"},
    {"A=x${config:G/B}y\n", "xy"},
    {"A=${config:G/B}\n", ""},
    {"A=x${config:Missing/B}y\n", "xy"},
    {"A=x${config:G/B}y\nB=1\nB=2\n", "x2y"},
    {"A=x${config:G/B}y\nB=1;2;3\n", "x3y"},
    {"A=x${config:G/B}y\nB=1\nB=\n", "xy"},
    {"A=x${config:G/B}${config:G/C}y\nB=1\nC=2\n", "x12y"},
    {"A=${config:G/B}x${config:G/C}y${config:G/B}\nB=long\nC=\n", "longxylong"},
    {"A=x${config:G/B}\nB=y${config:G/C}\nC=z${config:H/D}\n[H]\nD=!\n", "xyz!"},
    {"A=${config:G/B}\nB=$${config:G/C}\nC=1\n", "${config:G/C}"},
    {"B=1\nA=${config:G/B}\nB=2\n", "2"},
    {"A=1\nA=${config:G/B}\nB=2\n", "2"},
};

TEST_F(ValueResolution, PutsTheLastValuesOfTheReferredKeysInPlace) {
  for (const Resolution& row : kResolutions) {
    ConfigParser parser(-1);
    ASSERT_TRUE(loadText(parser, "[G]\n" + std::string(row.entries)));
    std::string text = "untouched";
    parser.getValue("G", "A", text);
    EXPECT_EQ(text, row.text) << row.entries;
  }
  EXPECT_EQ(log_.text(), "");
}

TEST_F(ValueResolution, SeesWhatALaterFileSets) {
  ASSERT_TRUE(load("B=early\n"));
  ASSERT_TRUE(load("A=${config:G/B}\n"));
  EXPECT_EQ(textOf("A"), "early");
  ASSERT_TRUE(load("B=late\n"));
  EXPECT_EQ(textOf("A"), "late");
  parser_.removeKey("G", "B");
  EXPECT_EQ(textOf("A"), "");
}

TEST_F(ValueResolution, ReplacesWhatTheOutputHeld) {
  ConfigValue value("xy");
  std::string text = "before";
  parser_.resolve(value, text);
  EXPECT_EQ(text, "xy");
  value.addReference("G", "Missing", 1);
  parser_.resolve(value, text);
  EXPECT_EQ(text, "xy");
}

TEST_F(ValueResolution, MakesNoReferredKeyExist) {
  ASSERT_TRUE(load("A=${config:H/B}\n"));
  EXPECT_EQ(textOf("A"), "");
  EXPECT_FALSE(parser_.hasGroup("H"));
}

// The bound on the values of one resolution

// A value with so many references to the key B.
std::string referencesToB(int count) {
  std::string value = "A=";
  for (int i = 0; i < count; ++i) {
    value += "${config:G/B}";
  }
  return value + "\n";
}

// Keys "0" to "count - 1", each but the last referring to the next one.
std::string chain(int count) {
  std::string entries;
  for (int i = 0; i < count - 1; ++i) {
    entries += std::to_string(i) + "=${config:G/" + std::to_string(i + 1) + "}\n";
  }
  return entries + std::to_string(count - 1) + "=end\n";
}

TEST_F(ValueResolution, FollowsAChainOf33Values) {
  ASSERT_TRUE(load(chain(33)));
  EXPECT_EQ(textOf("0"), "end");
  EXPECT_EQ(log_.text(), "");
}

TEST_F(ValueResolution, PutsTogether32ReferredValues) {
  ASSERT_TRUE(load("B=x\n" + referencesToB(32)));
  EXPECT_EQ(textOf("A"), std::string(32, 'x'));
  EXPECT_EQ(log_.text(), "");
}

TEST_F(ValueResolution, CountsValuesOverAllBranches) {
  // The key A, and two values for each of its references.
  ASSERT_TRUE(load("B=${config:G/C}\nC=x\n" + referencesToB(16)));
  EXPECT_EQ(textOf("A"), std::string(16, 'x'));
  EXPECT_EQ(log_.text(), "");
}

TEST_F(ValueResolution, DoesNotCountMissingKeys) {
  ASSERT_TRUE(load(referencesToB(40)));
  EXPECT_EQ(textOf("A"), "");
  EXPECT_EQ(log_.text(), "");
}

TEST_F(ValueResolution, CountsAnewForEachResolution) {
  ASSERT_TRUE(load("B=x\n" + referencesToB(32)));
  EXPECT_EQ(textOf("A"), textOf("A"));
  EXPECT_EQ(log_.text(), "");
}

// Failures

struct Overflow {
  const char* what;
  std::string entries;
  const char* key;
};

const Overflow kOverflows[] = {
    {"a chain of 34", chain(34), "0"},
    {"33 references", "B=x\n" + referencesToB(33), "A"},
    {"40 references", "B=x\n" + referencesToB(40), "A"},
    {"17 references to two values each", "B=${config:G/C}\nC=x\n" + referencesToB(17), "A"},
    {"a reference to itself", "A=a${config:G/A}\n", "A"},
    {"a circle of two", "A=a${config:G/B}\nB=b${config:G/A}\n", "A"},
    {"a circle of three", "A=${config:G/B}\nB=${config:G/C}\nC=x${config:G/A}\n", "A"},
    {"a circle that branches", "A=${config:G/A}${config:G/A}\n", "A"},
    {"a circle behind the value", "A=x${config:G/B}\nB=${config:G/B}\n", "A"},
};

TEST_F(ValueResolution, EndsEmptyWithOneErrorBeyond33Values) {
  for (const Overflow& row : kOverflows) {
    const LogCapture log;
    ConfigParser parser(-1);
    ASSERT_TRUE(loadText(parser, "[G]\n" + row.entries));
    std::string text = "untouched";
    parser.getValue("G", row.key, text);
    EXPECT_EQ(text, "") << row.what;
    EXPECT_EQ(log.text(), kTooDeep) << row.what;
  }
}

TEST_F(ValueResolution, EmptiesTheOutputOfAFailedResolution) {
  ASSERT_TRUE(load("A=a${config:G/A}\n"));
  ConfigValue value;
  value.addReference("G", "A", 0);
  std::string text = "before";
  parser_.resolve(value, text);
  EXPECT_EQ(text, "");
  EXPECT_EQ(log_.text(), kTooDeep);
}

TEST_F(ValueResolution, AsksForNoFurtherKeyOnceItHasFailed) {
  parser_.addKnownKey("G", "A", SingleValue);
  ASSERT_TRUE(load("A=${config:G/A}${config:G/Undeclared}\n"));
  EXPECT_EQ(textOf("A"), "");
  EXPECT_EQ(log_.text(), kTooDeep);
}

TEST_F(ValueResolution, WarnsOfAReferenceToAnUndeclaredKeyAndFollowsItAllTheSame) {
  ASSERT_TRUE(load("Old=1\n"));
  parser_.addKnownKey("G", "A", SingleValue);
  ASSERT_TRUE(load("A=x${config:G/Old}${config:H/None}y\n"));
  EXPECT_EQ(log_.text(), "");
  EXPECT_EQ(textOf("A"), "x1y");
  EXPECT_EQ(log_.text(),
            "WARNING: G/Old has not been added to the parser\n"
            "WARNING: H/None has not been added to the parser\n");
}

}  // namespace
}  // namespace Cradle::Parser
