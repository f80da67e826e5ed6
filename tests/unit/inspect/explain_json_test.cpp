// SPDX-License-Identifier: MIT
#include "inspect/explain_json.h"

#include <string>

#include <gtest/gtest.h>

#include "inspect/command.h"
#include "support/inspect_program.h"
#include "support/json_text.h"

namespace Cradle::Inspect {
namespace {

using Testing::InspectProgram;
using Testing::jsonAt;
using Testing::jsonSizeAt;

std::string explained(const InspectProgram& program, const std::string& key) {
  return program.run({"explain", key, "--format=json"}).text;
}

TEST(ExplainJson, HasEveryStatement) {
  const InspectProgram program;
  const std::string file = program.directory.write("1.conf", "[O]\nK=${nope}\nK=a\nK=\n");
  const std::string document = explained(program, "O/K");
  ASSERT_EQ(jsonSizeAt(document, "/statements"), 3U);
  EXPECT_EQ(jsonAt(document, "/statements/0/substitutions"),
            R"([{"template":"nope","outcome":"unknown-name","text":""}])");
  EXPECT_EQ(jsonAt(document, "/statements/1/by"), R"({"file":")" + file + R"(","line":4})");
  EXPECT_EQ(jsonAt(document, "/statements/2/state"), R"("clearing")");
  EXPECT_EQ(jsonAt(document, "/statements/2/by"), "null");
}

TEST(ExplainJson, FollowsReferences) {
  const InspectProgram program;
  program.directory.write("1.conf", "[O]\nK=${config:O/L}${config:O/M}\nL=l\nC=${config:O/C}\n");
  const std::string document = explained(program, "O/K");
  EXPECT_EQ(jsonAt(document, "/values/0/resolution"), R"("resolved")");
  EXPECT_EQ(jsonAt(document, "/values/0/references/0/text"), R"("l")");
  EXPECT_EQ(jsonAt(document, "/values/0/references/1/set"), "false");
  const std::string circle = explained(program, "O/C");
  EXPECT_EQ(jsonAt(circle, "/values/0/resolution"), R"("circle")");
  EXPECT_EQ(jsonAt(circle, "/values/0/circle"), R"(["O/C","O/C"])");
}

TEST(ExplainJson, KnowsTheKeysOfTheOutputs) {
  const InspectProgram program;
  program.directory.write("1.conf", "[Config]\nHostname=h\n[O]\nK=1\n");
  const std::string host = explained(program, "Config/Hostname");
  EXPECT_EQ(jsonAt(host, "/known/type"), R"("text")");
  EXPECT_EQ(jsonAt(host, "/generated"), R"("Hostname=h")");
  EXPECT_EQ(jsonAt(host, "/outputs/0/text"), R"("lxc.uts.name = h\n")");
  EXPECT_EQ(jsonAt(explained(program, "O/K"), "/known"), "null");
}

}  // namespace
}  // namespace Cradle::Inspect
