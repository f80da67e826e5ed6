// SPDX-License-Identifier: MIT
#include "android_property.h"

#include <gtest/gtest.h>

#include "support/log_capture.h"

namespace Cradle::Parser {
namespace {

using Testing::LogCapture;

// Failures

TEST(AndroidProperty, IsEmptyAndSilentWhereThereIsNoSuchProperty) {
  const LogCapture log(LogCapture::Level::LogDebug);
  for (const char* const name : {"no.such.property", ""}) {
    EXPECT_EQ(readProperty(name), "") << name;
  }
  EXPECT_EQ(log.text(), "");
}

}  // namespace
}  // namespace Cradle::Parser
