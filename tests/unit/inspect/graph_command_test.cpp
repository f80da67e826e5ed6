// SPDX-License-Identifier: MIT
#include <string>

#include <gtest/gtest.h>

#include "inspect/command_functions.h"
#include "support/environment_variable.h"
#include "support/inspect_program.h"

namespace Cradle::Inspect {
namespace {

using Testing::InspectProgram;

TEST(GraphCommand, HasThreeFormats) {
  const InspectProgram program;
  program.directory.write("1.conf", "[A]\nK=${config:A/L}\nM=1\n");
  EXPECT_TRUE(program.text({"graph"}).starts_with("digraph configuration {\n"));
  EXPECT_EQ(program.text({"graph"}).find("A/M"), std::string::npos);
  EXPECT_NE(program.text({"graph", "--all"}).find("A/M"), std::string::npos);
  EXPECT_TRUE(program.text({"graph", "--format=json"}).starts_with("{\n  \"files\": [\n"));
  program.directory.writeScript("dot", "echo a picture\n");
  const Testing::EnvironmentVariable path("PATH", program.directory.path().c_str());
  EXPECT_EQ(program.text({"graph", "--format=svg"}), "a picture\n");
}

TEST(GraphCommand, NeedsGraphvizForAPicture) {
  const InspectProgram program;
  program.directory.write("1.conf", "bad\n");
  EXPECT_EQ(program.run({"graph"}).status, kFindings);
  const Testing::EnvironmentVariable path("PATH", "/nowhere");
  const Answer answer = program.run({"graph", "--format=svg"});
  EXPECT_EQ(answer.status, kTrouble);
  EXPECT_EQ(answer.errors, "Graphviz (dot) cannot be run\n");
}

}  // namespace
}  // namespace Cradle::Inspect
