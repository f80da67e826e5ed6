// SPDX-License-Identifier: MIT
#include "base/conversion.h"

#include <bit>
#include <limits>
#include <locale>
#include <random>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "support/comma_locale.h"

namespace Cradle {
namespace {

using namespace std::string_literals;

constexpr int kMaxInt = std::numeric_limits<int>::max();
constexpr int kMinInt = std::numeric_limits<int>::min();
constexpr long kMaxLong = std::numeric_limits<long>::max();
constexpr long kMinLong = std::numeric_limits<long>::min();

template <typename Type>
struct Conversion {
  std::string text;
  Type value;
};

// Every row converts to its value, with the success given, whether or not success is asked for.
template <typename Type, typename Rows>
void expectConversions(Type (*convert)(const std::string&, bool*), const Rows& rows, bool success) {
  for (const Conversion<Type>& row : rows) {
    bool ok = !success;
    EXPECT_EQ(convert(row.text, &ok), row.value) << "'" << row.text << "'";
    EXPECT_EQ(ok, success) << "'" << row.text << "'";
    EXPECT_EQ(convert(row.text, nullptr), row.value) << "'" << row.text << "'";
  }
}

const Conversion<bool> kBooleans[] = {{"true", true}, {"false", false}};

const Conversion<int> kInts[] = {
    {"0", 0},
    {"12", 12},
    {"-12", -12},
    {"+12", 12},
    {" 12", 12},
    {"\t\n12", 12},
    {"007", 7},
    {"010", 10},
    {"0x1F", 31},
    {"0x1f", 31},
    {"0x00010", 16},
    {"2147483647", kMaxInt},
    {"0x0", 0},
    {"-0", 0},
    {"-1", -1},
    {"-2147483648", kMinInt},
    {"1000000", 1000000},
    {"0x7fffffff", kMaxInt},
};

const Conversion<long> kLongs[] = {
    {"-7", -7},
    {"0x1F", 31},
    {" 12", 12},
    {"4294967296", 4294967296},
    {"0xFFFFFFFF", 4294967295},
    {"9223372036854775807", kMaxLong},
    {"-9223372036854775808", kMinLong},
};

const Conversion<double> kDoubles[] = {
    {"0", 0.0},  {"12", 12.0}, {"-1.5", -1.5},  {"+1.5", 1.5}, {"1e3", 1000.0},
    {".5", 0.5}, {"5.", 5.0},  {"25E-2", 0.25}, {" 2", 2.0},   {"007.50", 7.5},
};

TEST(ConvertBool, KnowsTheTwoWords) {
  expectConversions(convertBool, kBooleans, true);
}

TEST(ConvertInt, ReadsDecimalNumbersAndHexadecimalOnesBehind0x) {
  expectConversions(convertInt, kInts, true);
}

TEST(ConvertLong, ReadsNumbersOf64Bits) {
  expectConversions(convertLong, kLongs, true);
}

TEST(ConvertDouble, ReadsDecimalFloatingPointNumbers) {
  expectConversions(convertDouble, kDoubles, true);
}

struct Formatting {
  double value;
  const char* text;
};

constexpr Formatting kFormattings[] = {
    {0, "0"},           {1, "1"},
    {-2.50, "-2.5"},    {0.1, "0.1"},
    {123456, "123456"}, {1234567, "1.23457e+06"},
    {1e6, "1e+06"},     {0.0001, "0.0001"},
    {0.00001, "1e-05"}, {1.0 / 3.0, "0.333333"},
};

TEST(FormatDouble, WritesTheDefaultFormOfAStream) {
  for (const Formatting& row : kFormattings) {
    EXPECT_EQ(formatDouble(row.value), row.text);
  }
}

template <typename Number>
Number extractFromStream(const std::string& text, bool* ok) {
  std::istringstream stream(text);
  stream.imbue(std::locale::classic());
  if (text.starts_with("0x")) {
    stream >> std::hex;
  }
  Number number{};
  stream >> number;
  *ok = !stream.fail() && stream.eof();
  return number;
}

template <typename Number>
void expectWhatStreamsExtract(Number (*convert)(const std::string&, bool*),
                              const std::string& text) {
  bool expectedOk = false;
  const Number expected = extractFromStream<Number>(text, &expectedOk);
  bool ok = !expectedOk;
  EXPECT_EQ(convert(text, &ok), expected) << "'" << text << "'";
  EXPECT_EQ(ok, expectedOk) << "'" << text << "'";
}

// A text of up to `longest` characters, most of which occur in numbers.
std::string randomText(std::mt19937& random, std::size_t longest) {
  static const std::string characters = "00123456789xXeE+-..,fFaAnNiI G\t\0"s;
  std::string text = random() % 4 == 0 ? "0x" : "";
  for (std::size_t length = random() % (longest + 1); length > 0; --length) {
    text += characters[random() % characters.size()];
  }
  return text;
}

TEST(Conversions, AgreeWithStreamsOnRandomTexts) {
  std::mt19937 random(20);  // a failure has to happen again
  for (int i = 0; i < 20'000 && !HasFailure(); ++i) {
    const std::string text = randomText(random, i % 8 == 0 ? 26 : 6);
    expectWhatStreamsExtract(convertInt, text);
    expectWhatStreamsExtract(convertLong, text);
    expectWhatStreamsExtract(convertDouble, text);
  }
}

TEST(FormatDouble, AgreesWithStreamsOnRandomNumbers) {
  std::mt19937_64 random(20);  // a failure has to happen again
  for (int i = 0; i < 10'000 && !HasFailure(); ++i) {
    const auto number = std::bit_cast<double>(random());
    std::ostringstream stream;
    stream << number;
    EXPECT_EQ(formatDouble(number), stream.str());
  }
}

// Failures

const Conversion<bool> kNoBooleans[] = {
    {"", false},      {"TRUE", false},   {"True", false},  {"FALSE", false},
    {"1", false},     {"0", false},      {"yes", false},   {" true", false},
    {"true ", false}, {"false ", false}, {"truex", false},
};

const Conversion<int> kNoInts[] = {
    {"", 0},
    {" ", 0},
    {"x", 0},
    {"true", 0},
    {"--1", 0},
    {"0X1F", 0},
    {" 0x1F", 0},
    {"-0x1F", 0},
    {"0x", 0},
    {"0xG", 0},
    {"0x1G", 1},
    {"12 ", 12},
    {"12\n", 12},
    {"12\0"s, 12},
    {"12x", 12},
    {"1F", 1},
    {"1.5", 1},
    {"1,000", 1},
    {"1e3", 1},
    {"2147483648", kMaxInt},
    {"-2147483649", kMinInt},
    {"0x80000000", kMaxInt},
    {"99999999999999999999", kMaxInt},
};

const Conversion<long> kNoLongs[] = {
    {"", 0},
    {"12 ", 12},
    {"0X1F", 0},
    {"9223372036854775808", kMaxLong},
    {"-9223372036854775809", kMinLong},
};

const Conversion<double> kNoDoubles[] = {
    {"", 0.0},
    {"x", 0.0},
    {"0x10", 0.0},
    {"1,5", 1.0},
    {"1.5 ", 1.5},
    {"1.5.5", 1.5},
    {"nan", 0.0},
    {"inf", 0.0},
    {"1e999", std::numeric_limits<double>::max()},
    {"-1e999", std::numeric_limits<double>::lowest()},
};

TEST(ConvertBool, FailsOnAnyOtherText) {
  expectConversions(convertBool, kNoBooleans, false);
}

TEST(ConvertInt, FailsUnlessTheWholeTextIsOneNumberInRange) {
  expectConversions(convertInt, kNoInts, false);
}

TEST(ConvertLong, FailsUnlessTheWholeTextIsOneNumberInRange) {
  expectConversions(convertLong, kNoLongs, false);
}

TEST(ConvertDouble, FailsUnlessTheWholeTextIsOneNumberInRange) {
  expectConversions(convertDouble, kNoDoubles, false);
}

TEST(Conversion, IsTheSameInEveryLocale) {
  const Testing::CommaLocale locale;
  ASSERT_EQ(std::strtod("1.5", nullptr), 1.0);
  bool ok = false;
  EXPECT_EQ(convertDouble("1.5", &ok), 1.5);
  EXPECT_TRUE(ok);
  EXPECT_EQ(formatDouble(1.5), "1.5");
  EXPECT_EQ(std::strtod("1,5", nullptr), 1.5) << "the caller's locale is as it was";
}

}  // namespace
}  // namespace Cradle
