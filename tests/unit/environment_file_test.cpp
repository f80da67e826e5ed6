// SPDX-License-Identifier: MIT
#include "environment_file.h"

#include <optional>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "support/log_capture.h"
#include "support/temporary_directory.h"

namespace Cradle::Parser {
namespace {

using namespace std::string_literals;
using Testing::LogCapture;
using Testing::TemporaryDirectory;

struct Variable {
  std::string file;
  const char* name;
  std::string value;
};

const Variable kVariables[] = {
    {"LANG=en_US.UTF-8\n", "LANG", "en_US.UTF-8"},
    {"LANG=en_US.UTF-8", "LANG", "en_US.UTF-8"},
    {"LANG=\"en_US.UTF-8\"\n", "LANG", "en_US.UTF-8"},
    {" LANG = en_US.UTF-8 \n", "LANG", "en_US.UTF-8"},
    {"\t\v\fLANG\r\t=\f\v\ta b\r\n", "LANG", "a b"},
    {"LANG= \"en\" \r\n", "LANG", "en"},
    {"A=b=c\n", "A", "b=c"},
    {"A==\n", "A", "="},
    {"A=\n", "A", ""},
    {"A= \t\n", "A", ""},
    {"A=\"\"\n", "A", ""},
    {"A=\"\n", "A", "\""},
    {"A=\" b \"\n", "A", " b "},
    {"A=\"\"b\"\"\n", "A", "\"b\""},
    {"A=\"b\n", "A", "\"b"},
    {"A=b\"\n", "A", "b\""},
    {"A=\"b\"c\n", "A", "\"b\"c"},
    {"A='b'\n", "A", "'b'"},
    {"A=b # note\n", "A", "b # note"},
    {"A=b\\nc\\\n", "A", "b\\nc\\"},
    {"A=\xff\0x\n"s, "A", "\xff\0x"s},
    // Which line counts
    {"B=1\nA=2\nC=3\n", "A", "2"},
    {"A=a\nA=b\n", "A", "b"},
    {"A=a\nA=\n", "A", ""},
    {"A=a\nA\n a \nB=A=c\n", "A", "a"},
    {"a=1\nA=2\nA B=3\nAA=4\n", "A", "2"},
    {"#A=1\n", "#A", "1"},
    {"# A=1\n", "# A", "1"},
    {"export A=1\n", "export A", "1"},
    {"A B=1\n", "A B", "1"},
    {"=1\n", "", "1"},
};

TEST(EnvironmentFile, GivesTheValueOfAVariable) {
  const LogCapture log;
  const TemporaryDirectory directory;
  for (const Variable& row : kVariables) {
    const std::string path = directory.write("env", row.file);
    for (const bool report : {false, true}) {
      EXPECT_EQ(readEnvironmentFile(path, row.name, report), row.value) << row.file;
    }
  }
  EXPECT_EQ(log.text(), "");
}

// Failures

struct Missing {
  const char* file;
  const char* name;
};

constexpr Missing kMissing[] = {
    {"", "A"},       {"A\n", "A"},       {"B=1\n", "A"},        {"a=1\n", "A"}, {"AA=1\n", "A"},
    {"#A=1\n", "A"}, {"A B=1\n", "A"},   {"B=A=1\n", "A"},      {"A=1\n", ""},  {"A\n=1\n", "A"},
    {"A=1\n", "A "}, {"\"A\"=1\n", "A"}, {"export A=1\n", "A"},
};

TEST(EnvironmentFile, HasNoValueForAnyOtherName) {
  const TemporaryDirectory directory;
  for (const Missing& row : kMissing) {
    const LogCapture log;
    const std::string path = directory.write("env", row.file);
    EXPECT_EQ(readEnvironmentFile(path, row.name, false), std::nullopt) << row.file;
    EXPECT_EQ(log.text(), "");
    EXPECT_EQ(readEnvironmentFile(path, row.name, true), std::nullopt) << row.file;
    EXPECT_EQ(log.text(), "ERROR: No '" + std::string(row.name) +
                              "' variable specified in environment file '" + path + "'\n");
  }
}

TEST(EnvironmentFile, HasNoValueWhereItCannotBeOpenedOrRead) {
  const TemporaryDirectory directory;
  for (const std::string& path : {directory.path("missing"), directory.path()}) {
    const LogCapture log;
    EXPECT_EQ(readEnvironmentFile(path, "A", false), std::nullopt) << path;
    EXPECT_EQ(log.text(), "");
    EXPECT_EQ(readEnvironmentFile(path, "A", true), std::nullopt) << path;
    EXPECT_EQ(log.text(), "ERROR: Reading environment file '" + path + "' failed\n");
  }
}

}  // namespace
}  // namespace Cradle::Parser
