// SPDX-License-Identifier: MIT
#include "inspect/statement_json.h"

#include <string>

#include <gtest/gtest.h>

#include "support/journal_bench.h"
#include "support/json_text.h"

namespace Cradle::Inspect {
namespace {

using Testing::jsonAt;

TEST(StatementJson, TellsWhatWasAssignedWhereAndWhatEndedIt) {
  const Testing::JournalBench bench({"[G]\nA=x\nA=\n"});
  const std::vector<Statement> statements = statementsOf(bench.history("G", "A"), true);
  ASSERT_EQ(statements.size(), 2U);
  const std::string assigned = dump(statementJson(bench.journal, statements[0]));
  EXPECT_EQ(jsonAt(assigned, "/line"), "2");
  EXPECT_EQ(jsonAt(assigned, "/state"), R"("cleared")");
  EXPECT_EQ(jsonAt(assigned, "/raw"), R"("x")");
  EXPECT_EQ(jsonAt(assigned, "/by/line"), "3");
  EXPECT_EQ(jsonAt(assigned, "/by/file"), jsonAt(assigned, "/file"));
  const std::string clearing = dump(statementJson(bench.journal, statements[1]));
  EXPECT_EQ(jsonAt(clearing, "/raw"), R"("")");
  EXPECT_EQ(jsonAt(clearing, "/by"), "null");
}

}  // namespace
}  // namespace Cradle::Inspect
