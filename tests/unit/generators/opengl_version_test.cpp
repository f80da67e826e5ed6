// SPDX-License-Identifier: MIT
#include "generators/opengl_version.h"

#include <string>

#include <gtest/gtest.h>

#include "support/log_capture.h"

namespace Cradle::Generators {
namespace {

struct Version {
  const char* text;
  std::int32_t packed;
};

constexpr Version kVersions[] = {
    {"3.2", 196610},
    {"3", 3},
    {"196610", 196610},
    {"0x30002", 196610},
    {"0", 0},
    {"2.0", 131072},
    {"03.02", 196610},
    {" 3", 3},
    {"+3", 3},
    {"2147483647", 2147483647},
    {"3.65537", 4 * 65536 + 1},
    {"32767.65535", 2147483647},
    {"65539.2", 196610},
    {"14567.8", 14567 * 65536 + 8},
};

TEST(OpenGlVersion, IsTheNumberItselfOrItsTwoPartsPacked) {
  for (const Version& version : kVersions) {
    EXPECT_EQ(parseOpenGlVersion(version.text), version.packed) << version.text;
  }
}

// Failures

TEST(OpenGlVersion, IsNothingForAnyOtherText) {
  const Testing::LogCapture log;
  for (const char* const text : {
           "",
           "3.2.1",
           "3,2",
           "3.",
           ".2",
           ".",
           "..",
           "3..2",
           "3.2 ",
           " 3.2",
           "3 ",
           "3.x",
           "v3",
           "3.+2",
           "-3",
           "-3.2",
           "0x3.2",
           "0X30002",
           "1e1",
           "2147483648",
           "-2147483649",
           "32768.0",
           "0x",
           "0x80000000",
           "3.99999999999",
           "99999999999.0",
           "32767.65536",
       }) {
    EXPECT_EQ(parseOpenGlVersion(text), std::nullopt) << text;
  }
  EXPECT_EQ(log.text(), "");
}

}  // namespace
}  // namespace Cradle::Generators
