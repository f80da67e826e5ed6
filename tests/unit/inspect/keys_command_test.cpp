// SPDX-License-Identifier: MIT
#include <string>

#include <gtest/gtest.h>

#include "generators/key_descriptions.h"
#include "inspect/command_functions.h"
#include "inspect/key_table.h"
#include "support/inspect_program.h"
#include "support/json_text.h"

namespace Cradle::Inspect {
namespace {

using Testing::InspectProgram;
using Testing::jsonSizeAt;

TEST(KeysCommand, TellsAllAboutAKey) {
  const InspectProgram program;
  const std::string text = program.text({"keys", "Config/Arch", "--color=never"});
  EXPECT_TRUE(
      text.starts_with("Config/Arch\n  The machine type that the container sees.\n  Type  "));
  EXPECT_NE(text.find("lxc.arch"), std::string::npos);
}

TEST(KeysCommand, ListsAGroupOrAll) {
  const InspectProgram program;
  EXPECT_TRUE(program.text({"keys", "Display"}).starts_with("[Display]\n"));
  EXPECT_EQ(jsonSizeAt(program.text({"keys", "--format=json"}), "/keys"), knownKeys().size());
}

TEST(KeysCommand, SetsGroupsApart) {
  const InspectProgram program;
  const std::string text = program.text({"keys", "--color=always"});
  std::string before;
  for (const Generators::GroupDescription& group : Generators::groupDescriptions()) {
    const std::string title = "\x1b[1m[" + std::string(group.group) + "]\x1b[0m\n";
    const std::string meaning = "\x1b[2m" + std::string(group.meaning) + "\x1b[0m\n";
    EXPECT_NE(text.find(before + title + meaning), std::string::npos) << group.group;
    before = "\n\n";
  }
  EXPECT_TRUE(text.starts_with("\x1b[1m["));
}

TEST(KeysCommand, KnowsNoOthers) {
  const InspectProgram program;
  EXPECT_EQ(program.run({"keys", "Dispaly"}).errors,
            "Dispaly: no such key or group is known (did you mean Display?)\n");
  const Answer answer = program.run({"keys", "Nope"});
  EXPECT_EQ(answer.status, kFindings);
  EXPECT_EQ(answer.errors, "Nope: no such key or group is known\n");
  EXPECT_EQ(program.run({"keys", "Display/Densty"}).errors,
            "Display/Densty: no such key or group is known (did you mean Density?)\n");
  EXPECT_EQ(program.run({"keys", "Nope", "--format=json"}).text, "{\n  \"keys\": []\n}\n");
}

}  // namespace
}  // namespace Cradle::Inspect
