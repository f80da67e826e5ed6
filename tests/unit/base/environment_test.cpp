// SPDX-License-Identifier: MIT
#include "base/environment.h"

#include <gtest/gtest.h>

#include "support/environment_variable.h"

namespace Cradle {
namespace {

using Testing::EnvironmentVariable;

TEST(Environment, GivesTheValueOfASetVariable) {
  const EnvironmentVariable variable("CRADLE_TEST_VALUE", " a=b ");
  EXPECT_EQ(getEnvironment("CRADLE_TEST_VALUE", "fallback"), " a=b ");
}

TEST(Environment, GivesTheEmptyValueOfASetVariable) {
  const EnvironmentVariable variable("CRADLE_TEST_VALUE", "");
  EXPECT_EQ(getEnvironment("CRADLE_TEST_VALUE", "fallback"), "");
}

TEST(Environment, GivesTheFallbackForAnUnsetVariable) {
  const EnvironmentVariable variable("CRADLE_TEST_VALUE", nullptr);
  EXPECT_EQ(getEnvironment("CRADLE_TEST_VALUE", "fallback"), "fallback");
  EXPECT_EQ(getEnvironment("CRADLE_TEST_VALUE", ""), "");
}

TEST(Environment, TakesNamesAsTheyStand) {
  const EnvironmentVariable variable("CRADLE_TEST_VALUE", "value");
  for (const char* const other : {"cradle_test_value", "CRADLE_TEST_VALU", "CRADLE_TEST_VALUE="}) {
    EXPECT_EQ(getEnvironment(other, "fallback"), "fallback") << other;
  }
}

}  // namespace
}  // namespace Cradle
