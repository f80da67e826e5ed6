// SPDX-License-Identifier: MIT
#include "inspect/program.h"

#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "support/inspect_program.h"

namespace Cradle::Inspect {
namespace {

using Testing::InspectProgram;

Answer alone(std::vector<std::string> words) {
  words.insert(words.begin(), "program");
  return InspectProgram::runAlone(std::move(words));
}

TEST(Program, TellsAboutItself) {
  EXPECT_EQ(alone({"--help"}).status, kFine);
  EXPECT_TRUE(alone({"-h"}).text.starts_with("Usage: cradle-inspect-config "));
  EXPECT_TRUE(alone({"--version"}).text.starts_with("cradle-inspect-config "));
}

// Failures

TEST(Program, RefusesAWrongCommandLine) {
  const std::vector<std::pair<std::vector<std::string>, std::string>> cases{
      {{}, "which command?"},
      {{"nope"}, "nope: unknown command"},
      {{"--nope"}, "--nope: unknown option"},
      {{"check", "a"}, "check takes no operand"},
      {{"explain"}, "explain takes GROUP/KEY"},
      {{"explain", "a", "b"}, "explain takes GROUP/KEY"},
      {{"check", "--format=svg"}, "--format svg is for graph"}};
  for (const auto& [words, complaint] : cases) {
    const Answer answer = alone(words);
    EXPECT_EQ(answer.status, kTrouble) << complaint;
    EXPECT_EQ(answer.text, "");
    EXPECT_EQ(answer.errors,
              "cradle-inspect-config: " + complaint + "\nTry 'cradle-inspect-config --help'.\n");
  }
}

}  // namespace
}  // namespace Cradle::Inspect
