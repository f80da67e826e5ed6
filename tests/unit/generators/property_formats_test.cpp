// SPDX-License-Identifier: MIT
#include "generators/property_formats.h"

#include <string>

#include <gtest/gtest.h>

#include "support/log_capture.h"
#include "support/output_bench.h"
#include "support/users.h"
#include "support/written_texts.h"

namespace Cradle::Generators {
namespace {

using Testing::expectWritten;
using Testing::keyLine;
using Testing::kKeyRow;
using Testing::KnownUser;
using Testing::LogCapture;
using Testing::OutputBench;
using Testing::thisUser;
using Testing::unusedUserId;
using Testing::Written;

constexpr const char* kNoText = "${config:G/None}";

constexpr Written kWritten[] = {
    {&kForced, "true", "force_on"},
    {&kForced, "false", "force_off"},
    {&kForced, "TRUE", "force_off"},
    {&kBaseName, "/run/user/1000/wayland-0", "wayland-0"},
    {&kBaseName, "/wayland-0", "wayland-0"},
    {&kBaseName, "wayland-0", "wayland-0"},
    {&kBaseName, "/run/user/", ""},
    {&kBaseName, kNoText, ""},
    {&kManglingType, "NoDots", "1"},
    {&kOpenGlVersion, "3.2", "196610"},
    {&kOpenGlVersion, "0x30002", "196610"},
    {&kLogLevel, "debug", "D"},
    {&kLogLevel, "Warning", "W"},
    {&kLogLevel, "s", "S"},
    {&kLaunchMode, "fullscreen", "1"},
    {&kLaunchMode, "freeform", "5"},
};

TEST(PropertyFormats, WriteAValue) {
  expectWritten(kWritten);
}

TEST(PropertyFormats, WriteWhetherTheTextIsTheRequiredOne) {
  const OutputRow row{.source = {"G", "Key"}, .when = {.text = "bridge"}};
  EXPECT_EQ(OutputBench(keyLine("bridge")).text(kIsRequired, row), "1");
  EXPECT_EQ(OutputBench(keyLine("Bridge")).text(kIsRequired, row), "0");
  EXPECT_EQ(OutputBench().text(kIsRequired, row), "0");
}

TEST(PropertyFormats, WriteTheIdOfAUserNamedByNameOrNumber) {
  const KnownUser user = thisUser();
  const std::string id = std::to_string(user.uid);
  EXPECT_EQ(OutputBench(keyLine(user.name)).text(kHostUser, kKeyRow), id);
  EXPECT_EQ(OutputBench(keyLine(id)).text(kHostUser, kKeyRow), id);
  EXPECT_EQ(OutputBench(keyLine("0" + id)).text(kHostUser, kKeyRow), id);
  EXPECT_EQ(OutputBench(keyLine("1")).text(kHostUser, kKeyRow), getpwuid(1) == nullptr ? "0" : "1");
}

TEST(PropertyFormats, WriteNoIdOfAUserWhoDoesNotExist) {
  const LogCapture log;
  for (const std::string& value :
       {std::string("no such user"), std::to_string(unusedUserId()), std::string("0x1"),
        std::string("1x"), std::string("1 "), std::string(" 1"), std::string("+1"),
        std::string("-1"), std::string("4294967297"), std::string(kNoText)}) {
    EXPECT_EQ(OutputBench(keyLine(value)).text(kHostUser, kKeyRow), "0") << value;
  }
  EXPECT_EQ(OutputBench().text(kHostUser, kKeyRow), "0");
  EXPECT_EQ(log.text(), "");
}

TEST(PropertyFormats, WriteThePartsOfTheLocale) {
  OutputBench bench("[Config]\nLanguageOverride=fi_FI.UTF-8\n");
  EXPECT_EQ(bench.text(kLanguage, {}), "fi");
  EXPECT_EQ(bench.text(kCountry, {}), "FI");
  EXPECT_EQ(bench.text(kLocale, {}), "fi-FI");
}

TEST(PropertyFormats, ReadTheLocaleOnce) {
  OutputBench bench("[Config]\nLanguageFilePath=/no/such/file\n");
  const LogCapture log;
  EXPECT_EQ(bench.text(kLanguage, {}), "en");
  EXPECT_EQ(bench.text(kCountry, {}), "US");
  EXPECT_EQ(bench.text(kLocale, {}), "en-US");
  EXPECT_EQ(log.text(), "WARNING: Could not parse locale file /no/such/file\n");
}

TEST(RawLines, AreTheElementsAsTheyAre) {
  OutputBench bench("[G]\nKey=ro.a=1;# comment; b ;no equals sign\n");
  EXPECT_TRUE(writeRawLines(bench.context, kKeyRow));
  EXPECT_EQ(bench.written(), "ro.a=1\n# comment\n b \nno equals sign\n");
}

TEST(RawLines, AreNoneWithoutTheKey) {
  OutputBench bench;
  EXPECT_TRUE(writeRawLines(bench.context, kKeyRow));
  EXPECT_EQ(bench.written(), "");
}

// Conditions

TEST(PropertyConditions, MangleAppIdsUnlessNoneWithAnEmptyPrefix) {
  struct Mangling {
    const char* lines;
    bool mangled;
    bool hasType;
  };
  const OutputRow row{.source = {"Config", "AppIdManglingType"}};
  for (const Mangling& mangling : std::initializer_list<Mangling>{
           {"AppIdManglingType=None\n", false, false},
           {"AppIdManglingType=None\nAppIdPrefix=p\n", true, false},
           {"AppIdManglingType=NoDots\n", true, true},
           {"AppIdManglingType=NoDots\nAppIdPrefix=p\n", true, true},
           {"AppIdManglingType=none\n", true, true},
           {"AppIdPrefix=p\n", true, true},
           {"", true, true},
       }) {
    const OutputBench bench("[Config]\n" + std::string(mangling.lines));
    EXPECT_EQ(bench.holds(kIfMangled, row), mangling.mangled) << mangling.lines;
    EXPECT_EQ(bench.holds(kIfNotNone, row), mangling.hasType) << mangling.lines;
  }
}

TEST(PropertyConditions, LeaveTheNetworkAloneForTwoWords) {
  for (const char* const word : {"skip", "disable"}) {
    EXPECT_FALSE(OutputBench(keyLine(word)).holds(kIfNetworkUsed, kKeyRow)) << word;
  }
  for (const char* const word : {"Skip", "bridge", "lagoon", "skip ", kNoText}) {
    EXPECT_TRUE(OutputBench(keyLine(word)).holds(kIfNetworkUsed, kKeyRow)) << word;
  }
  EXPECT_TRUE(OutputBench().holds(kIfNetworkUsed, kKeyRow));
}

TEST(PropertyConditions, KnowTheLettersOfTheLogLevels) {
  for (const char* const level : {"v", "D", "info", "warning", "Error", "F", "silent", "strange"}) {
    EXPECT_TRUE(OutputBench(keyLine(level)).holds(kIfLogLevel, kKeyRow)) << level;
  }
  for (const char* const level : {"x", "notice", " debug", "0", kNoText}) {
    EXPECT_FALSE(OutputBench(keyLine(level)).holds(kIfLogLevel, kKeyRow)) << level;
  }
  EXPECT_FALSE(OutputBench().holds(kIfLogLevel, kKeyRow));
}

// Failures

constexpr Written kWrong[] = {
    {&kManglingType, "nodots", "nodots"},
    {&kManglingType, kNoText, ""},
    {&kOpenGlVersion, "3.2.1", "3.2.1"},
    {&kOpenGlVersion, "-3", "-3"},
    {&kLaunchMode, "Freeform", "Freeform valid modes are freeform and fullscreen"},
    {&kLaunchMode, kNoText, " valid modes are freeform and fullscreen"},
};

TEST(PropertyFormats, ReportAWrongValue) {
  for (const Written& wrong : kWrong) {
    const LogCapture log;
    OutputBench bench(keyLine(wrong.value));
    EXPECT_EQ(bench.text(*wrong.format, kKeyRow), "wrong") << wrong.value;
    EXPECT_EQ(log.text(), "ERROR: Invalid value for G/Key: " + std::string(wrong.text) + "\n");
  }
}

TEST(PropertyFormats, HaveNoLocaleForAWrongOverride) {
  for (const Format* const format : {&kLanguage, &kCountry, &kLocale}) {
    const LogCapture log;
    OutputBench bench("[Config]\nLanguageOverride=english\n");
    EXPECT_EQ(bench.text(*format, {}), "wrong");
    EXPECT_EQ(log.text(),
              "ERROR: english: did not contain language and country\n"
              "ERROR: Invalid value for Config/LanguageOverride: english\n");
  }
}

}  // namespace
}  // namespace Cradle::Generators
