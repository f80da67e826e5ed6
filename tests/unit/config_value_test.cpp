// SPDX-License-Identifier: MIT
#include "config_value.h"

#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/log_capture.h"

namespace Cradle::Parser {
namespace {

using ::testing::HasSubstr;
using Testing::LogCapture;

struct Reference {
  ValueName name;
  std::size_t offset;
};

ConfigValue valueWith(std::string text, const std::vector<Reference>& references) {
  ConfigValue value(std::move(text));
  for (const Reference& reference : references) {
    value.addReference(reference.name.first, reference.name.second, reference.offset);
  }
  return value;
}

std::vector<ValueName> namesIn(const ConfigValue& value) {
  return {value.references().begin(), value.references().end()};
}

std::string rendered(const ConfigValue& value, const std::vector<std::string>& texts) {
  return value.render(texts);
}

TEST(ConfigValue, BeginsAsEmptyPlainText) {
  const ConfigValue value;
  EXPECT_EQ(value.kind(), ConfigValue::PlainText);
  EXPECT_EQ(value.text(), "");
  EXPECT_TRUE(value.references().empty());
  EXPECT_TRUE(value.isEmpty());
}

TEST(ConfigValue, IsNumberedByItsKind) {
  EXPECT_EQ(static_cast<std::uint32_t>(ConfigValue::PlainText), 0U);
  EXPECT_EQ(static_cast<std::uint32_t>(ConfigValue::TextWithReferences), 1U);
}

TEST(ConfigValue, HoldsItsText) {
  ConfigValue value("text");
  EXPECT_EQ(value.text(), "text");
  EXPECT_FALSE(value.isEmpty());
  value.setText("other");
  EXPECT_EQ(value.text(), "other");
  value.setText("");
  EXPECT_TRUE(value.isEmpty());
}

TEST(ConfigValue, IsTextWithReferencesFromItsFirstReferenceOn) {
  ConfigValue value;
  value.addReference("G", "K", 0);
  EXPECT_EQ(value.kind(), ConfigValue::TextWithReferences);
  EXPECT_FALSE(value.isEmpty());
  value.addReference("A", "B", 0);
  value.addReference("", "B", 0);
  EXPECT_EQ(namesIn(value), (std::vector<ValueName>{{"G", "K"}, {"A", "B"}, {"", "B"}}));
}

TEST(ConfigValue, SharesNothingWithItsCopies) {
  const ConfigValue original = valueWith("xy", {{{"G", "K"}, 1}});
  ConfigValue constructed(original);
  ConfigValue assigned("other");
  assigned = original;
  for (ConfigValue* const copy : {&constructed, &assigned}) {
    EXPECT_EQ(namesIn(*copy), namesIn(original));
    EXPECT_EQ(rendered(*copy, {"-"}), "x-y");
    copy->setText("");
    copy->addReference("A", "B", 0);
  }
  EXPECT_EQ(namesIn(original), (std::vector<ValueName>{{"G", "K"}}));
  EXPECT_EQ(rendered(original, {"-"}), "x-y");
}

TEST(ConfigValue, LosesItsReferencesWhenPlainTextIsAssigned) {
  ConfigValue value = valueWith("x", {{{"G", "K"}, 0}});
  value = ConfigValue("plain");
  EXPECT_EQ(value.kind(), ConfigValue::PlainText);
  EXPECT_EQ(value.text(), "plain");
  const ConfigValue other("other");
  value = other;
  EXPECT_EQ(value.text(), "other");
}

struct Rendering {
  std::string text;
  std::vector<std::size_t> offsets;
  std::vector<std::string> texts;
  std::string rendered;
};

const Rendering kRenderings[] = {
    {"xy", {1}, {"1"}, "x1y"},
    {"xy", {1}, {""}, "xy"},
    {"xy", {0}, {"longer than it"}, "longer than itxy"},
    {"xy", {2}, {"1"}, "xy1"},
    {"", {0}, {"1"}, "1"},
    {"", {0, 0}, {"1", "2"}, "12"},
    {"xy", {1, 1}, {"1", "2"}, "x12y"},
    {"xy", {0, 1, 2}, {"aa", "", "ccc"}, "aaxyccc"},
    {"abc", {1, 2}, {"1", "2"}, "a1b2c"},
    {"abc", {3, 3}, {"12", "34"}, "abc1234"},
    {"x", {0}, {"${y}"}, "${y}x"},
};

TEST(ConfigValue, RendersTheTextsAtTheOffsetsOfItsReferences) {
  for (const Rendering& row : kRenderings) {
    ConfigValue value(row.text);
    for (const std::size_t offset : row.offsets) {
      value.addReference("G", "K", offset);
    }
    EXPECT_EQ(rendered(value, row.texts), row.rendered);
    EXPECT_EQ(value.text(), row.text);
  }
}

TEST(ConfigValue, RendersPlainTextAsItIsWhateverTheTexts) {
  const LogCapture log;
  EXPECT_EQ(rendered(ConfigValue("plain"), {}), "plain");
  EXPECT_EQ(rendered(ConfigValue("plain"), {"a", "b"}), "plain");
  EXPECT_EQ(log.text(), "");
}

// Failures

struct Mismatch {
  std::vector<std::string> texts;
  const char* message;
};

const Mismatch kMismatches[] = {
    {{}, "WARNING: ConfigValue references size 2 mismatch with resolve list size 0\n"},
    {{"1"}, "WARNING: ConfigValue references size 2 mismatch with resolve list size 1\n"},
    {{"1", "2", "3"}, "WARNING: ConfigValue references size 2 mismatch with resolve list size 3\n"},
};

TEST(ConfigValue, RendersItsLiteralTextWithAWarningWhereTheCountsDiffer) {
  const ConfigValue value = valueWith("xy", {{{"G", "K"}, 1}, {{"G", "K"}, 2}});
  for (const Mismatch& row : kMismatches) {
    const LogCapture log;
    EXPECT_EQ(rendered(value, row.texts), "xy");
    EXPECT_EQ(log.text(), row.message);
  }
}

TEST(ConfigValueDeathTest, CannotBeRenderedWithAnOffsetBeyondItsText) {
  const ConfigValue value = valueWith("xy", {{{"G", "K"}, 0}, {{"G", "K"}, 3}});
  EXPECT_DEATH(rendered(value, {"123", "4"}), HasSubstr("Assertion"));
}

}  // namespace
}  // namespace Cradle::Parser
