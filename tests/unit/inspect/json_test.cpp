// SPDX-License-Identifier: MIT
#include "inspect/json.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace Cradle::Inspect {
namespace {

TEST(Json, KeepsTheOrderOfItsMembers) {
  EXPECT_EQ(dump(JsonObject().with("b", nullptr).with("a", JsonObject().with("c", true))),
            "{\n  \"b\": null,\n  \"a\": {\n    \"c\": true\n  }\n}\n");
}

TEST(Json, HasListsOfValuesAndOfWhatIsMadeOfThem) {
  const std::vector<std::size_t> numbers{1, 2};
  EXPECT_EQ(dump(JsonObject().with("a", jsonList(numbers))),
            "{\n  \"a\": [\n    1,\n    2\n  ]\n}\n");
  const auto isOne = [](std::size_t number) { return number == 1; };
  EXPECT_EQ(dump(JsonObject().with("a", jsonList(numbers, isOne))),
            "{\n  \"a\": [\n    true,\n    false\n  ]\n}\n");
}

TEST(Json, HasEmptyListsAndObjects) {
  EXPECT_EQ(dump(JsonObject().with("a", JsonList()).with("b", JsonObject())),
            "{\n  \"a\": [],\n  \"b\": {}\n}\n");
}

TEST(Json, ReplacesBytesThatAreNoText) {
  EXPECT_EQ(dump(JsonObject().with("a", std::string("x\xff\x01"))),
            "{\n  \"a\": \"x\xef\xbf\xbd\\u0001\"\n}\n");
}

}  // namespace
}  // namespace Cradle::Inspect
