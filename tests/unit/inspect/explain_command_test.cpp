// SPDX-License-Identifier: MIT
#include <string>

#include <gtest/gtest.h>

#include "inspect/command_functions.h"
#include "support/inspect_program.h"

namespace Cradle::Inspect {
namespace {

using Testing::InspectProgram;

TEST(ExplainCommand, KnowsWhatIsThere) {
  const InspectProgram program;
  program.directory.write("1.conf", "[Own]\nK=1\n");
  EXPECT_EQ(program.run({"explain", "Own/K"}).status, kFine);
  EXPECT_EQ(program.run({"explain", "Config/Arch"}).status, kFine);
  const Answer nothing = program.run({"explain", "Own/L"});
  EXPECT_EQ(nothing.status, kFindings);
  EXPECT_EQ(nothing.text, "Own/L is not set\n  No output reads this key.\n");
}

TEST(ExplainCommand, WantsAKey) {
  const Answer answer = InspectProgram().run({"explain", "Own"});
  EXPECT_EQ(answer.status, kTrouble);
  EXPECT_EQ(answer.errors, "Own: name a key as GROUP/KEY\n");
}

TEST(ExplainCommand, TellsOfABadTreeWhatItCan) {
  const InspectProgram program;
  program.directory.write("1.conf", "bad\n[Own]\nK=1\n");
  const Answer answer = program.run({"explain", "Own/K"});
  EXPECT_EQ(answer.status, kFindings);
  EXPECT_TRUE(answer.text.starts_with("Own/K = 1\n"));
  EXPECT_NE(answer.errors.find("bad-line"), std::string::npos);
}

}  // namespace
}  // namespace Cradle::Inspect
