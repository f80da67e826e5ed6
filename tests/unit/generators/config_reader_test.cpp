// SPDX-License-Identifier: MIT
#include "generators/config_reader.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/config_text.h"
#include "support/log_capture.h"

namespace Cradle::Generators {
namespace {

using Parser::ConfigParser;
using Testing::loadText;
using Testing::LogCapture;

constexpr ConfigKey kAbsent{"G", "Absent"};

class ConfigReaderTest : public ::testing::Test {
 protected:
  ConfigReaderTest() {
    EXPECT_TRUE(loadText(parser_,
                         "[G]\n"
                         "Text=one;two words\n"
                         "Flag=true\n"
                         "Integer=-5\n"
                         "Long=0x123456789\n"
                         "Real=96.5\n"
                         "Reference=${config:G/Text}!\n"
                         "NoText=${config:G/Absent}\n"
                         "[Cleared]\n"
                         "Key=1\n"
                         "Key=\n"));
  }

  ConfigParser parser_{-1};
  ConfigReader config_{parser_};
  LogCapture log_{LogCapture::Level::LogDebug};
};

TEST_F(ConfigReaderTest, ReadsEachTypeOfValue) {
  EXPECT_EQ(config_.text({"G", "Text"}), "two words");
  EXPECT_TRUE(config_.flag({"G", "Flag"}));
  EXPECT_EQ(config_.integer({"G", "Integer"}), -5);
  EXPECT_EQ(config_.longInteger({"G", "Long"}), 0x123456789);
  EXPECT_EQ(config_.real({"G", "Real"}), 96.5);
  EXPECT_EQ(config_.list({"G", "Text"}), (std::vector<std::string>{"one", "two words"}));
}

TEST_F(ConfigReaderTest, FollowsReferences) {
  EXPECT_EQ(config_.text({"G", "Reference"}), "two words!");
}

TEST_F(ConfigReaderTest, TellsWhatIsThere) {
  EXPECT_TRUE(config_.has({"G", "Text"}));
  EXPECT_FALSE(config_.has({"G", "text"}));
  EXPECT_FALSE(config_.has({"H", "Text"}));
  EXPECT_TRUE(config_.hasGroup("G"));
  EXPECT_FALSE(config_.hasGroup("H"));
}

TEST_F(ConfigReaderTest, FindsAGroupWhoseKeysWereAllRemoved) {
  EXPECT_FALSE(config_.has({"Cleared", "Key"}));
  EXPECT_TRUE(config_.hasGroup("Cleared"));
}

TEST_F(ConfigReaderTest, HasAMeaningForEveryAbsentValue) {
  EXPECT_EQ(config_.text(kAbsent), "");
  EXPECT_EQ(config_.text(kAbsent, "default"), "default");
  EXPECT_FALSE(config_.flag(kAbsent));
  EXPECT_EQ(config_.integer(kAbsent), 0);
  EXPECT_EQ(config_.longInteger(kAbsent), 0);
  EXPECT_EQ(config_.real(kAbsent), 0.0);
  EXPECT_EQ(config_.list(kAbsent), std::vector<std::string>());
  EXPECT_EQ(log_.text(), "");
}

TEST_F(ConfigReaderTest, TakesAPresentValueWithoutTextAsItIs) {
  const ConfigKey noText{"G", "NoText"};
  EXPECT_TRUE(config_.has(noText));
  EXPECT_EQ(config_.text(noText, "default"), "");
  EXPECT_EQ(config_.list(noText), std::vector<std::string>());
}

// Failures

TEST_F(ConfigReaderTest, ReadsOfAnInvalidValueWhatCouldBeRead) {
  struct Reading {
    const char* text;
    int integer;
    double real;
  };
  for (const Reading& reading : std::initializer_list<Reading>{
           {"12abc", 12, 12.0},
           {"abc", 0, 0.0},
           {"1.5", 1, 1.5},
           {"0x1F", 31, 0.0},
           {"99999999999", 2147483647, 99999999999.0},
       }) {
    ConfigParser parser(-1);
    ASSERT_TRUE(loadText(parser, "[G]\nKey=" + std::string(reading.text) + "\n"));
    const ConfigReader config(parser);
    EXPECT_EQ(config.integer({"G", "Key"}), reading.integer) << reading.text;
    EXPECT_EQ(config.real({"G", "Key"}), reading.real) << reading.text;
    EXPECT_FALSE(config.flag({"G", "Key"})) << reading.text;
  }
  EXPECT_EQ(log_.text(), "");
}

}  // namespace
}  // namespace Cradle::Generators
