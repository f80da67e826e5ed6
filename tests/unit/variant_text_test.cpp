// SPDX-License-Identifier: MIT
#include "variant_text.h"

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>

#include <glib-object.h>
#include <gtest/gtest.h>

#include "support/child_process.h"
#include "support/log_capture.h"

namespace Cradle::Parser {
namespace {

using Testing::inChildWithoutDescriptors;
using Testing::LogCapture;

// A value in GVariant's text form, for example "uint16 7".
GVariant* parsed(const char* text) {
  GVariant* const value = g_variant_parse(nullptr, text, nullptr, nullptr, nullptr);
  EXPECT_NE(value, nullptr) << text;
  return value;
}

struct Printed {
  const char* value;
  std::string text;
};

void expectPrinted(const Printed& row) {
  const LogCapture log(LogCapture::Level::LogDebug);
  EXPECT_EQ(variantToString(parsed(row.value)), row.text) << row.value;
  EXPECT_EQ(log.text(), "") << row.value;
}

TEST(VariantText, PrintsBooleansAsWords) {
  expectPrinted({"true", "true"});
  expectPrinted({"false", "false"});
}

TEST(VariantText, PrintsAByteAsItself) {
  expectPrinted({"byte 65", "A"});
  expectPrinted({"byte 10", "\n"});
  expectPrinted({"byte 0", std::string(1, '\0')});
  expectPrinted({"byte 255", "\xff"});
}

TEST(VariantText, PrintsIntegersInDecimalOverTheirWholeRange) {
  for (const Printed& row : {
           Printed{"int16 -32768", "-32768"},
           Printed{"int16 32767", "32767"},
           Printed{"uint16 0", "0"},
           Printed{"uint16 65535", "65535"},
           Printed{"int32 -2147483648", "-2147483648"},
           Printed{"int32 2147483647", "2147483647"},
           Printed{"uint32 4294967295", "4294967295"},
           Printed{"int64 -9223372036854775808", "-9223372036854775808"},
           Printed{"int64 9223372036854775807", "9223372036854775807"},
           Printed{"uint64 18446744073709551615", "18446744073709551615"},
       }) {
    expectPrinted(row);
  }
}

TEST(VariantText, PrintsFloatingPointNumbersInSixDigits) {
  for (const Printed& row : {
           Printed{"0.0", "0"},
           Printed{"-0.5", "-0.5"},
           Printed{"1.0", "1"},
           Printed{"3.14159265", "3.14159"},
           Printed{"2.5000001", "2.5"},
           Printed{"123456.0", "123456"},
           Printed{"999999.4", "999999"},
           Printed{"1234567.0", "1.23457e+06"},
           Printed{"1000000.0", "1e+06"},
           Printed{"0.0001", "0.0001"},
           Printed{"0.00001", "1e-05"},
           Printed{"1e300", "1e+300"},
       }) {
    expectPrinted(row);
  }
}

TEST(VariantText, PrintsNumbersThatAreNone) {
  EXPECT_EQ(variantToString(g_variant_new_double(std::numeric_limits<double>::infinity())), "inf");
  EXPECT_EQ(variantToString(g_variant_new_double(-std::numeric_limits<double>::infinity())),
            "-inf");
  EXPECT_EQ(variantToString(g_variant_new_double(std::nan(""))), "nan");
}

TEST(VariantText, PrintsStringsAsTheyStand) {
  expectPrinted({"''", ""});
  expectPrinted({"'some text'", "some text"});
  expectPrinted({"' ${USER} a;b \\n'", " ${USER} a;b \n"});
  expectPrinted({"'\u00e4\u20ac'", "\u00e4\u20ac"});
}

TEST(VariantText, GivesNothingForNullInSilence) {
  const LogCapture log(LogCapture::Level::LogDebug);
  EXPECT_EQ(variantToString(nullptr), "");
  EXPECT_EQ(log.text(), "");
}

// Ownership

// A value of `type` that sets `*released` when its last reference is gone.
GVariant* watched(const char* type, bool* released) {
  static const char data[16] = {};
  const std::size_t size = std::strcmp(type, "u") == 0 ? 4 : 1;
  return g_variant_ref_sink(g_variant_new_from_data(
      G_VARIANT_TYPE(type), data, size, TRUE, [](void* flag) { *static_cast<bool*>(flag) = true; },
      released));
}

TEST(VariantText, ReleasesTheValueWhateverItsType) {
  const LogCapture log;
  for (const char* const type : {"b", "y", "u", "s", "g", "as"}) {
    bool released = false;
    variantToString(watched(type, &released));
    EXPECT_TRUE(released) << type;
  }
}

TEST(VariantText, ReleasesOneReferenceOnly) {
  bool released = false;
  GVariant* const value = watched("u", &released);
  g_variant_ref(value);
  EXPECT_EQ(variantToString(value), "0");
  EXPECT_FALSE(released);
  g_variant_unref(value);
  EXPECT_TRUE(released);
}

// Failures

TEST(VariantText, WarnsOfTypesThatItCannotPrint) {
  struct Unsupported {
    const char* value;
    const char* type;
  };
  for (const Unsupported& row : {
           Unsupported{"['a', 'b']", "as"},
           Unsupported{"@as []", "as"},
           Unsupported{"objectpath '/a'", "o"},
           Unsupported{"signature 'ai'", "g"},
           Unsupported{"<1>", "v"},
           Unsupported{"(1, 'a')", "(is)"},
           Unsupported{"()", "()"},
           Unsupported{"@mi 5", "mi"},
           Unsupported{"{'a': <1>}", "a{sv}"},
           Unsupported{"b'bytes'", "ay"},
           Unsupported{"[true]", "ab"},
       }) {
    const LogCapture log;
    EXPECT_EQ(variantToString(parsed(row.value)), "") << row.value;
    EXPECT_EQ(log.text(), "WARNING: Unsupported GVariant type '" + std::string(row.type) + "'\n");
  }
}

// The library stays once it is loaded, so this needs a process in which it has not been.
TEST(VariantTextDeathTest, GivesNothingWithoutTheLibrary) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  const auto print = [] {
    GVariant* const value = g_variant_ref_sink(parsed("'text'"));
    const std::string result = inChildWithoutDescriptors([&] {
      const LogCapture log(LogCapture::Level::LogDebug);
      return "[" + variantToString(value) + "]" + log.text();
    });
    g_variant_unref(value);
    std::exit(result == "[]" ? 0 : 1);
  };
  EXPECT_EXIT(print(), ::testing::ExitedWithCode(0), "");
}

// GLib refuses to read a handle as an integer, says so itself and gives 0.
TEST(VariantText, PrintsAHandleAsWhatGlibReadsOfIt) {
  static std::string complaint;
  const GLogFunc previous = g_log_set_default_handler(
      [](const char*, GLogLevelFlags, const char* text, void*) { complaint += text; }, nullptr);
  const LogCapture log;
  EXPECT_EQ(variantToString(g_variant_new_handle(7)), "0");
  EXPECT_EQ(log.text(), "");
  EXPECT_TRUE(complaint.starts_with("g_variant_get_int32: assertion ")) << complaint;
  g_log_set_default_handler(previous, nullptr);
}

}  // namespace
}  // namespace Cradle::Parser
