// SPDX-License-Identifier: MIT
#include "inspect/json.h"

#include <string>

#include <gtest/gtest.h>

namespace Cradle::Inspect {
namespace {

TEST(Json, KeepsTheOrderOfItsMembers) {
  EXPECT_EQ(dump({{"b", 1}, {"a", {1, 2}}}), "{\n  \"b\": 1,\n  \"a\": [\n    1,\n    2\n  ]\n}\n");
}

TEST(Json, ReplacesBytesThatAreNoText) {
  EXPECT_EQ(dump({{"a", "x\xff\x01"}}), "{\n  \"a\": \"x\xef\xbf\xbd\\u0001\"\n}\n");
}

}  // namespace
}  // namespace Cradle::Inspect
