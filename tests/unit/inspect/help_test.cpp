// SPDX-License-Identifier: MIT
#include "inspect/help.h"

#include <string>

#include <gtest/gtest.h>

#include "inspect/command.h"
#include "support/golden_session.h"

namespace Cradle::Inspect {
namespace {

TEST(Help, TellsEveryCommandAndOption) {
  const std::string text = helpText();
  for (const Command& command : commands()) {
    EXPECT_NE(text.find("\n  " + std::string(command.name) + " "), std::string::npos)
        << command.name;
  }
  for (const OptionRow& row : optionRows()) {
    EXPECT_NE(text.find("--" + std::string(row.name)), std::string::npos) << row.name;
  }
}

TEST(Help, IsThatOfTheGoldenSession) {
  EXPECT_NE(Testing::goldenSession().find("$ --help\n" + helpText()), std::string::npos);
}

TEST(Help, KnowsTheVersion) {
  EXPECT_TRUE(versionText().starts_with("cradle-inspect-config "));
  EXPECT_TRUE(versionText().ends_with("\n"));
}

}  // namespace
}  // namespace Cradle::Inspect
