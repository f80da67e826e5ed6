// SPDX-License-Identifier: MIT
#include "inspect/explain_json.h"

#include <string>

#include <gtest/gtest.h>

#include "inspect/command.h"
#include "inspect/json.h"
#include "support/inspect_program.h"

namespace Cradle::Inspect {
namespace {

using Testing::InspectProgram;

Json explained(const InspectProgram& program, const std::string& key) {
  return Json::parse(program.run({"explain", key, "--format=json"}).text);
}

TEST(ExplainJson, HasEveryStatement) {
  const InspectProgram program;
  const std::string file = program.directory.write("1.conf", "[O]\nK=${nope}\nK=a\nK=\n");
  const Json statements = explained(program, "O/K")["statements"];
  ASSERT_EQ(statements.size(), 3U);
  EXPECT_EQ(statements[0]["substitutions"][0],
            (Json{{"template", "nope"}, {"outcome", "unknown-name"}, {"text", ""}}));
  EXPECT_EQ(statements[1]["by"], (Json{{"file", file}, {"line", 4}}));
  EXPECT_EQ(statements[2]["state"], "clearing");
  EXPECT_TRUE(statements[2]["by"].is_null());
}

TEST(ExplainJson, FollowsReferences) {
  const InspectProgram program;
  program.directory.write("1.conf", "[O]\nK=${config:O/L}${config:O/M}\nL=l\nC=${config:O/C}\n");
  const Json value = explained(program, "O/K")["values"][0];
  EXPECT_EQ(value["resolution"], "resolved");
  EXPECT_EQ(value["references"][0]["text"], "l");
  EXPECT_EQ(value["references"][1]["set"], false);
  const Json circle = explained(program, "O/C")["values"][0];
  EXPECT_EQ(circle["resolution"], "circle");
  EXPECT_EQ(circle["circle"], (Json{"O/C", "O/C"}));
}

TEST(ExplainJson, KnowsTheKeysOfTheOutputs) {
  const InspectProgram program;
  program.directory.write("1.conf", "[Config]\nHostname=h\n[O]\nK=1\n");
  const Json host = explained(program, "Config/Hostname");
  EXPECT_EQ(host["known"]["type"], "text");
  EXPECT_EQ(host["generated"], "Hostname=h");
  EXPECT_EQ(host["outputs"][0]["text"], "lxc.uts.name = h\n");
  EXPECT_TRUE(explained(program, "O/K")["known"].is_null());
}

}  // namespace
}  // namespace Cradle::Inspect
