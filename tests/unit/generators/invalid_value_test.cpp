// SPDX-License-Identifier: MIT
#include "generators/invalid_value.h"

#include <gtest/gtest.h>

#include "support/log_capture.h"

namespace Cradle::Generators {
namespace {

using Testing::LogCapture;

constexpr ConfigKey kName{"Group", "Key"};

TEST(InvalidValue, IsAnErrorWithGroupKeyAndValue) {
  const LogCapture log(LogCapture::Level::LogError);
  reportInvalidValue(kName, "the value");
  EXPECT_EQ(log.text(), "ERROR: Invalid value for Group/Key: the value\n");
}

TEST(InvalidValue, ShowsAnEmptyValueAsNothing) {
  const LogCapture log;
  reportInvalidValue(kName, "");
  EXPECT_EQ(log.text(), "ERROR: Invalid value for Group/Key: \n");
}

TEST(InvalidValue, IsFollowedByItsHint) {
  const LogCapture log;
  reportInvalidValue(kName, "red", " is no number");
  EXPECT_EQ(log.text(), "ERROR: Invalid value for Group/Key: red is no number\n");
}

}  // namespace
}  // namespace Cradle::Generators
