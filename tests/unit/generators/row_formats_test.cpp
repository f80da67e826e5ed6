// SPDX-License-Identifier: MIT
#include "generators/row_formats.h"

#include <string>

#include <gtest/gtest.h>

#include "support/log_capture.h"
#include "support/output_bench.h"
#include "support/written_texts.h"

namespace Cradle::Generators {
namespace {

using Testing::expectWritten;
using Testing::keyLine;
using Testing::kKeyRow;
using Testing::LogCapture;
using Testing::OutputBench;
using Testing::Written;

constexpr Written kWritten[] = {
    {&kText, "as = it;stands", "stands"},
    {&kText, " two  words ", " two  words "},
    {&kText, "${config:G/None}", ""},
    {&kWords, "one;two;three words", "one two three words"},
    {&kWords, "one", "one"},
    {&kWords, "${config:G/None}", ""},
    {&kInt, "12", "12"},
    {&kInt, "-5", "-5"},
    {&kInt, "0x1F", "31"},
    {&kInt, "010", "10"},
    {&kInt, "12abc", "12"},
    {&kInt, "abc", "0"},
    {&kInt, "2147483648", "2147483647"},
    {&kInt, "-2147483649", "-2147483648"},
    {&kInt, "${config:G/None}", "0"},
    {&kU64, "0", "0"},
    {&kU64, "4294967296", "4294967296"},
    {&kU64, "9223372036854775807", "9223372036854775807"},
    {&kU64, "18446744073709551615", "9223372036854775807"},
    {&kU64, "-1", "18446744073709551615"},
    {&kU64, "-9223372036854775808", "9223372036854775808"},
    {&kU64, "0x100000000000000", "72057594037927936"},
    {&kU64, "abc", "0"},
    {&kReal, "96", "96"},
    {&kReal, "96.0", "96"},
    {&kReal, "96.5", "96.5"},
    {&kReal, "96.1234567", "96.1235"},
    {&kReal, "1234567", "1.23457e+06"},
    {&kReal, "-0.25", "-0.25"},
    {&kReal, "1e3", "1000"},
    {&kReal, "96,5", "96"},
    {&kReal, "0x10", "0"},
    {&kReal, "abc", "0"},
    {&kBool, "true", "true"},
    {&kBool, "false", "false"},
    {&kBool, "TRUE", "false"},
    {&kBool, "1", "false"},
    {&kFlag, "true", "1"},
    {&kFlag, "false", "0"},
    {&kFlag, "yes", "0"},
    {&kNotFlag, "true", "0"},
    {&kNotFlag, "false", "1"},
    {&kNotFlag, "True", "1"},
};

TEST(RowFormats, WriteAValue) {
  expectWritten(kWritten);
}

TEST(RowFormats, WriteAnAbsentValue) {
  OutputBench bench;
  EXPECT_EQ(bench.text(kText, kKeyRow), "");
  EXPECT_EQ(bench.text(kText, {.source = {"G", "Key"}, .text = "512m"}), "512m");
  EXPECT_EQ(bench.text(kWords, kKeyRow), "");
  EXPECT_EQ(bench.text(kInt, kKeyRow), "0");
  EXPECT_EQ(bench.text(kU64, kKeyRow), "0");
  EXPECT_EQ(bench.text(kReal, kKeyRow), "0");
  EXPECT_EQ(bench.text(kBool, kKeyRow), "false");
  EXPECT_EQ(bench.text(kFlag, kKeyRow), "0");
  EXPECT_EQ(bench.text(kNotFlag, kKeyRow), "1");
}

TEST(RowFormats, WriteTheLastOfSeveralValues) {
  OutputBench bench("[G]\nKey=1;2\nKey=3\n");
  EXPECT_EQ(bench.text(kInt, kKeyRow), "3");
  EXPECT_EQ(bench.text(kText, kKeyRow), "3");
  EXPECT_EQ(bench.text(kWords, kKeyRow), "1 2 3");
}

TEST(RowFormats, WriteTheFactsOfTheRunAndTheRowsOwnText) {
  OutputBench bench(keyLine("other"));
  bench.run.facts = {.userId = 4294967294, .user = "u", .home = "/h", .instance = "i"};
  EXPECT_EQ(bench.text(kUserId, kKeyRow), "4294967294");
  EXPECT_EQ(bench.text(kUserName, kKeyRow), "u");
  EXPECT_EQ(bench.text(kHome, kKeyRow), "/h");
  EXPECT_EQ(bench.text(kInstance, kKeyRow), "i");
  EXPECT_EQ(bench.text(kFixed, {.source = {"G", "Key"}, .text = "fixed"}), "fixed");
}

// Conditions

struct Held {
  const Condition* condition;
  const char* value;
  bool holds;
};

constexpr Held kHeld[] = {
    {&kIfPresent, "x", true},
    {&kIfPresent, "${config:G/None}", true},
    {&kIfNotEmpty, "x", true},
    {&kIfNotEmpty, " ", true},
    {&kIfNotEmpty, "${config:G/None}", false},
    {&kIfPositive, "1", true},
    {&kIfPositive, "0", false},
    {&kIfPositive, "-1", false},
    {&kIfPositive, "x", false},
    {&kIfPositive, "0x1", true},
    {&kIfGroupPresent, "x", true},
    {&kWhen, "bridge", true},
    {&kWhen, "Bridge", false},
    {&kWhen, "bridge ", false},
    {&kUnless, "bridge", false},
    {&kUnless, "Bridge", true},
};

constexpr OutputRow kRequiring{.source = {"G", "Key"}, .when = {{"G", "Key"}, "bridge"}};

TEST(RowConditions, HoldForTheirValues) {
  for (const Held& held : kHeld) {
    const OutputBench bench(keyLine(held.value));
    EXPECT_EQ(bench.holds(*held.condition, kRequiring), held.holds)
        << held.condition->name << ": " << held.value;
  }
}

TEST(RowConditions, OfAnAbsentValueHoldForUnlessAlone) {
  const OutputBench bench("[H]\nKey=bridge\n");
  EXPECT_TRUE(bench.holds(kUnless, kRequiring));
  for (const Condition* const condition :
       {&kIfPresent, &kIfNotEmpty, &kIfPositive, &kIfGroupPresent, &kWhen}) {
    EXPECT_FALSE(bench.holds(*condition, kRequiring)) << condition->name;
  }
}

TEST(RowConditions, FindAGroupWhoseKeysWereRemoved) {
  const OutputBench bench("[G]\nOther=1\nOther=\n");
  EXPECT_TRUE(bench.holds(kIfGroupPresent, kKeyRow));
  EXPECT_FALSE(bench.holds(kIfPresent, kKeyRow));
}

}  // namespace
}  // namespace Cradle::Generators
