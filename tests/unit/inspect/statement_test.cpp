// SPDX-License-Identifier: MIT
#include "inspect/statement.h"

#include <string>

#include <gtest/gtest.h>

#include "support/journal_bench.h"

namespace Cradle::Inspect {
namespace {

using Testing::JournalBench;

// "RAW STATE by FILE:LINE" of each statement about the key K.
std::string told(const JournalBench& bench, bool takesOne) {
  std::string text;
  for (const Statement& statement : statementsOf(bench.history("", "K"), takesOne)) {
    text += statement.part == nullptr ? "-" : statement.part->raw;
    text.append(" ").append(nameOf(statement.state));
    text += statement.by == nullptr ? "" : " by " + bench.placeOf(statement.by->place);
    text += "\n";
  }
  return text;
}

TEST(Statements, AllCountForAList) {
  EXPECT_EQ(told(JournalBench({"K=a;b\n", "K=c\n"}), false),
            "a effective\nb effective\nc effective\n");
}

TEST(Statements, OnlyTheLastCountsForOneValue) {
  EXPECT_EQ(told(JournalBench({"K=a;b\n", "K=c\n"}), true),
            "a overridden by 1:1\nb overridden by 2:1\nc effective\n");
}

TEST(Statements, EndWhereTheKeyIsCleared) {
  EXPECT_EQ(told(JournalBench({"K=a\nK=${nope}\n", "K=\nK=b\n"}), false),
            "a cleared by 2:1\n${nope} discarded\n- clearing\nb effective\n");
}

TEST(Statements, DoNotCountWithoutText) {
  JournalBench bench({});
  bench.directory.write("empty", "E=\n");
  bench.directory.write("1.conf", "K=a\nK=${envfile:" + bench.directory.path("empty") + ":E}\n");
  bench.journal = readJournal({bench.directory.path()}, bench.parser, false);
  const auto statements = statementsOf(bench.history("", "K"), true);
  ASSERT_EQ(statements.size(), 2U);
  EXPECT_EQ(statements[0].state, State::Effective);
  EXPECT_EQ(statements[1].state, State::Empty);
}

}  // namespace
}  // namespace Cradle::Inspect
