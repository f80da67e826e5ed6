// SPDX-License-Identifier: MIT
#include <string>

#include <gtest/gtest.h>

#include "inspect/command_functions.h"
#include "support/inspect_program.h"
#include "support/json_text.h"

namespace Cradle::Inspect {
namespace {

using Testing::InspectProgram;
using Testing::jsonAt;
using Testing::jsonSizeAt;

TEST(ShowCommand, HasEachValueWithItsLine) {
  const InspectProgram program;
  program.directory.write("1.conf", "[Config]\nHostname=a\nMounts=x;$;y\n[Own]\nK=1\n");
  program.directory.write("2.conf", "[Config]\nHostname=${config:Own/K}b\n[Own]\nK=\n");
  EXPECT_EQ(program.text({"show", "--color=never"}),
            "[Config]\n2.conf:2  Hostname=b\n1.conf:3  Mounts=x\n1.conf:3  Mounts=y\n");
  EXPECT_EQ(program.text({"show", "--all", "--color=never"}),
            "[Config]\n"
            "1.conf:2  Hostname=a  # overridden by 2.conf:2\n"
            "2.conf:2  Hostname=b\n"
            "1.conf:3  Mounts=x\n"
            "1.conf:3  Mounts=$    # discarded\n"
            "1.conf:3  Mounts=y\n"
            "\n[Own]\n"
            "1.conf:5  K=1  # cleared by 2.conf:4\n"
            "2.conf:4  K=   # clearing\n");
}

TEST(ShowCommand, ShowsOneGroupOrKey) {
  const InspectProgram program;
  program.directory.write("1.conf", "[A]\nK=1\nL=2\n[B]\nK=3\n");
  EXPECT_EQ(program.text({"show", "A/K", "--color=never"}), "[A]\n1.conf:2  K=1\n");
  EXPECT_EQ(program.text({"show", "B", "--color=never"}), "[B]\n1.conf:5  K=3\n");
  EXPECT_EQ(program.run({"show", "Confg"}).status, kFindings);
  EXPECT_EQ(program.run({"show", "Confg"}).errors, "[Confg] has no value (did you mean Config?)\n");
  EXPECT_EQ(program.run({"show", "Display/Densty"}).errors,
            "Display/Densty is not set (did you mean Density?)\n");
  EXPECT_EQ(program.run({"show", "Display/Density"}).errors, "Display/Density is not set\n");
  EXPECT_EQ(program.run({"show", "[bad"}).errors, "[bad has no value\n");
}

TEST(ShowCommand, ShowsWhatCanBeReadOfABadTree) {
  const InspectProgram program;
  program.directory.write("1.conf", "bad\n[A]\nK=1\n");
  const Answer answer = program.run({"show"});
  EXPECT_EQ(answer.status, kFindings);
  EXPECT_NE(answer.text.find("K=1"), std::string::npos);
  EXPECT_NE(answer.errors.find("1.conf:1: error: "), std::string::npos);
}

TEST(ShowCommand, NamesWhatIsInNoGroup) {
  const InspectProgram program;
  program.directory.write("1.conf", "K=1\n[A\nL=2\n");
  EXPECT_EQ(program.text({"show", "--color=never"}),
            "# before the first group\n1.conf:1  K=1\n\n# behind [A\n1.conf:3  L=2\n");
}

TEST(ShowCommand, NamesARefusedLineAsItIsAskedFor) {
  const InspectProgram program;
  program.directory.write("1.conf", "[\x96\x1b]\nK=1\n");
  const std::string name = R"([\x96\x1b])";
  EXPECT_EQ(program.text({"show", "--color=never"}), "# behind " + name + "\n1.conf:2  K=1\n");
  EXPECT_EQ(jsonSizeAt(program.run({"show", "--format=json"}).text, "/groups/" + name), 1U);
  EXPECT_EQ(program.text({"show", name + "/K", "--color=never"}),
            "# behind " + name + "\n1.conf:2  K=1\n");
}

TEST(ShowCommand, TellsProgramsWhatEndedAValue) {
  const InspectProgram program;
  const std::string file = program.directory.write("1.conf", "[A]\nK=1\nK=\n");
  const std::string document = program.run({"show", "--all", "--format=json"}).text;
  EXPECT_EQ(jsonAt(document, "/groups/A/K/0/by"), R"({"file":")" + file + R"(","line":3})");
  EXPECT_EQ(jsonAt(document, "/groups/A/K/1/by"), "null");
  EXPECT_EQ(jsonAt(document, "/groups/A/K/1/state"), R"("clearing")");
}

}  // namespace
}  // namespace Cradle::Inspect
