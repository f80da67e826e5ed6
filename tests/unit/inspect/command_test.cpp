// SPDX-License-Identifier: MIT
#include "inspect/command.h"

#include <set>
#include <string_view>

#include <gtest/gtest.h>

namespace Cradle::Inspect {
namespace {

TEST(Commands, AreNamedOnceAndDescribed) {
  std::set<std::string_view> names;
  for (const Command& command : commands()) {
    EXPECT_TRUE(names.insert(command.name).second) << command.name;
    EXPECT_FALSE(command.help.empty()) << command.name;
    EXPECT_LE(command.fewest, command.most);
    EXPECT_LE(command.most, 1U) << command.name;
    EXPECT_EQ(command.most == 0, command.operands.empty()) << command.name;
    EXPECT_EQ(command.fewest < command.most, command.operands.starts_with('[')) << command.name;
    EXPECT_NE(command.run, nullptr);
  }
}

}  // namespace
}  // namespace Cradle::Inspect
