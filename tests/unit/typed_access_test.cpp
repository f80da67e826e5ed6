// SPDX-License-Identifier: MIT
#include <string>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "config_parser.h"
#include "support/config_text.h"
#include "support/log_capture.h"

namespace Cradle::Parser {
namespace {

using ::testing::HasSubstr;
using Testing::loadText;
using Testing::LogCapture;

// Access to the key K of the group G, which has the values given.
class TypedAccess : public ::testing::Test {
 protected:
  bool load(const std::string& values, const std::string& others = "") {
    return loadText(parser_, "[G]\nK=\nK=" + values + "\n" + others);
  }

  template <typename Type>
  Type get() const {
    Type value{};
    parser_.getValue("G", "K", value);
    return value;
  }

  ConfigParser parser_{-1};
};

// A value converts to its number, text or word, with success or without.
template <typename Type>
struct Reading {
  const char* values;
  Type value;
  bool ok;
};

// Both forms of the getter, whatever `out` and `ok` held before.
template <typename Type, typename Rows>
void expectReadings(const Rows& rows) {
  for (const Reading<Type>& row : rows) {
    ConfigParser parser(-1);
    ASSERT_TRUE(loadText(parser, "[G]\nK=" + std::string(row.values) + "\n")) << row.values;
    for (const bool before : {false, true}) {
      Type value{};
      bool ok = before;
      parser.getValue("G", "K", value, &ok);
      EXPECT_EQ(value, row.value) << row.values;
      EXPECT_EQ(ok, row.ok) << row.values;
    }
    Type unchecked{};
    parser.getValue("G", "K", unchecked, nullptr);
    EXPECT_EQ(unchecked, row.value) << row.values;
    Type shortForm{};
    parser.getValue("G", "K", shortForm);
    EXPECT_EQ(shortForm, row.value) << row.values;
  }
}

constexpr Reading<bool> kBooleans[] = {
    {"true", true, true},      {"false", false, true},
    {"TRUE", false, false},    {"1", false, false},
    {"yes", false, false},     {"True", false, false},
    {" true", false, false},   {"no;true", true, true},
    {"true;no", false, false}, {"${config:G/X}", false, false},
};

constexpr Reading<int> kInts[] = {
    {"12", 12, true},
    {"-7", -7, true},
    {"0x1F", 31, true},
    {" 12", 12, true},
    {"0X1F", 0, false},
    {"12 ", 12, false},
    {"x", 0, false},
    {"1;2;3", 3, true},
    {"2147483648", 2147483647, false},
    {"${config:G/X}", 0, false},
    {"3;x", 0, false},
};

constexpr Reading<long> kLongs[] = {
    {"12", 12, true},
    {"4294967296", 4294967296, true},
    {"-4294967297", -4294967297, true},
    {"0xFFFFFFFF", 4294967295, true},
    {"9223372036854775808", 9223372036854775807, false},
    {"12 ", 12, false},
    {"1;2", 2, true},
};

constexpr Reading<double> kDoubles[] = {
    {"1e3", 1000.0, true}, {"-0.5", -0.5, true}, {"7", 7.0, true},
    {"0x10", 0.0, false},  {"1,5", 1.0, false},  {"1.5;2.5", 2.5, true},
};

TEST_F(TypedAccess, ReadsTheLastValueAsABoolean) {
  expectReadings<bool>(kBooleans);
}

TEST_F(TypedAccess, ReadsTheLastValueAsAnInt) {
  expectReadings<int>(kInts);
}

TEST_F(TypedAccess, ReadsTheLastValueAsALong) {
  expectReadings<long>(kLongs);
}

TEST_F(TypedAccess, ReadsTheLastValueAsADouble) {
  expectReadings<double>(kDoubles);
}

TEST_F(TypedAccess, ReadsTheLastValueAsAString) {
  ASSERT_TRUE(load("a;b"));
  EXPECT_EQ(get<std::string>(), "b");
  ASSERT_TRUE(load(" a "));
  EXPECT_EQ(get<std::string>(), " a ");
}

TEST_F(TypedAccess, ReplacesWhatAScalarHeld) {
  ASSERT_TRUE(load("x"));
  std::string text = "before";
  int number = 42;
  bool truth = true;
  parser_.getValue("G", "K", text);
  parser_.getValue("G", "K", number);
  parser_.getValue("G", "K", truth);
  EXPECT_EQ(text, "x");
  EXPECT_EQ(number, 0);
  EXPECT_FALSE(truth);
}

TEST_F(TypedAccess, ResolvesReferencesBeforeItConverts) {
  ASSERT_TRUE(load("1${config:G/X}", "X=2\n"));
  EXPECT_EQ(get<int>(), 12);
  EXPECT_EQ(get<long>(), 12);
  EXPECT_EQ(get<double>(), 12.0);
  EXPECT_EQ(get<std::string>(), "12");
  EXPECT_EQ(get<std::vector<int>>(), std::vector<int>{12});
  ASSERT_TRUE(load("tr${config:G/X}", "X=ue\n"));
  EXPECT_EQ(get<bool>(), true);
}

// All values

template <typename Type>
struct ListReading {
  const char* values;
  std::vector<Type> list;
  bool ok;
};

template <typename Type, typename Rows>
void expectLists(const Rows& rows) {
  for (const ListReading<Type>& row : rows) {
    ConfigParser parser(-1);
    const std::string others = "E=${config:G/Missing}\nN=1\n";
    ASSERT_TRUE(loadText(parser, "[G]\nK=" + std::string(row.values) + "\n" + others));
    for (const bool before : {false, true}) {
      std::vector<Type> list;
      bool ok = before;
      parser.getValue("G", "K", list, &ok);
      EXPECT_EQ(list, row.list) << row.values;
      EXPECT_EQ(ok, row.ok) << row.values;
    }
    std::vector<Type> unchecked;
    parser.getValue("G", "K", unchecked, nullptr);
    parser.getValue("G", "K", unchecked);
    std::vector<Type> twice = row.list;
    twice.insert(twice.end(), row.list.begin(), row.list.end());
    EXPECT_EQ(unchecked, twice) << row.values;
  }
}

const ListReading<int> kIntLists[] = {
    {"1;2;3", {1, 2, 3}, true},
    {"1;x;3", {1, 0, 3}, false},
    {"x", {0}, false},
    {"3;2147483648", {3, 2147483647}, false},
    {"1;${config:G/N};0x10", {1, 1, 16}, true},
    {"1;${config:G/Missing};3", {1, 3}, true},
    {"1;${config:G/E};3", {1, 3}, true},
    {"${config:G/E}", {}, true},
    {"1;2${config:G/E};3", {1, 2, 3}, true},
};

const ListReading<long> kLongLists[] = {
    {"1;4294967296;-3", {1, 4294967296, -3}, true},
    {"1;x;3", {1, 0, 3}, false},
    {"1;${config:G/E};3", {1, 3}, true},
};

const ListReading<double> kDoubleLists[] = {
    {"1.5;1e3", {1.5, 1000.0}, true},
    {"1.5;0x10;2", {1.5, 0.0, 2.0}, false},
    {"1.5;${config:G/E}", {1.5}, true},
};

const ListReading<bool> kBooleanLists[] = {
    {"true;false;true", {true, false, true}, true},
    {"true;yes;true", {true, false, true}, false},
    {"true;${config:G/E}", {true}, true},
};

TEST_F(TypedAccess, ReadsAllValuesAsInts) {
  expectLists<int>(kIntLists);
}

TEST_F(TypedAccess, ReadsAllValuesAsLongs) {
  expectLists<long>(kLongLists);
}

TEST_F(TypedAccess, ReadsAllValuesAsDoubles) {
  expectLists<double>(kDoubleLists);
}

TEST_F(TypedAccess, ReadsAllValuesAsBooleans) {
  expectLists<bool>(kBooleanLists);
}

TEST_F(TypedAccess, ReadsAllValuesAsStringsButTemplatesThatAreEmpty) {
  ASSERT_TRUE(load("a;${config:G/Missing}; b ;x${config:G/N}", "N=1\n"));
  EXPECT_EQ(get<std::vector<std::string>>(), (std::vector<std::string>{"a", " b ", "x1"}));
}

// An empty value that is plain text comes from a single-value key whose template is empty.
TEST_F(TypedAccess, KeepsAnEmptyPlainValueInAList) {
  parser_.addKnownKey("G", "K", SingleValue);
  parser_.addTemplate("EMPTY", "");
  ASSERT_TRUE(load("${EMPTY}"));
  EXPECT_EQ(get<std::vector<std::string>>(), std::vector<std::string>{""});
  std::vector<int> list;
  bool ok = true;
  parser_.getValue("G", "K", list, &ok);
  EXPECT_EQ(list, std::vector<int>{0});
  EXPECT_FALSE(ok);
}

TEST_F(TypedAccess, AppendsToWhatAListHeld) {
  ASSERT_TRUE(load("1;2"));
  std::vector<int> ints{8, 9};
  std::vector<bool> booleans{true};
  std::vector<std::string> texts{"before"};
  bool ok = false;
  parser_.getValue("G", "K", ints, &ok);
  parser_.getValue("G", "K", booleans);
  parser_.getValue("G", "K", texts);
  EXPECT_EQ(ints, (std::vector<int>{8, 9, 1, 2}));
  EXPECT_TRUE(ok);
  EXPECT_EQ(booleans, (std::vector<bool>{true, false, false}));
  EXPECT_EQ(texts, (std::vector<std::string>{"before", "1", "2"}));
}

TEST_F(TypedAccess, NeverLogsAFailedConversion) {
  const LogCapture log(LogCapture::Level::LogDebug);
  ASSERT_TRUE(load("x;y"));
  get<int>();
  get<std::vector<bool>>();
  EXPECT_EQ(log.text(), "");
}

// Failures

TEST_F(TypedAccess, ConvertsTheEmptyTextOfACircle) {
  const LogCapture log;
  ASSERT_TRUE(load("1${config:G/K}"));
  int number = 42;
  bool ok = true;
  parser_.getValue("G", "K", number, &ok);
  EXPECT_EQ(number, 0);
  EXPECT_FALSE(ok);
  EXPECT_EQ(get<std::vector<int>>(), std::vector<int>{});
  EXPECT_EQ(log.text(),
            "ERROR: Max depth reached, possibly circular reference.\n"
            "ERROR: Max depth reached, possibly circular reference.\n");
}

TEST_F(TypedAccess, CannotReadAMissingKey) {
  ASSERT_TRUE(load("1"));
  int number = 0;
  std::vector<std::string> texts;
  EXPECT_DEATH(parser_.getValue("G", "Missing", number), HasSubstr("the key exists"));
  EXPECT_DEATH(parser_.getValue("Missing", "K", texts), HasSubstr("the key exists"));
}

}  // namespace
}  // namespace Cradle::Parser
