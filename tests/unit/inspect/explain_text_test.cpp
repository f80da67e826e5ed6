// SPDX-License-Identifier: MIT
#include "inspect/explain_text.h"

#include <string>

#include <gtest/gtest.h>

#include "support/inspect_program.h"

namespace Cradle::Inspect {
namespace {

using Testing::InspectProgram;

// Columns are as wide as the names of files, which have no certain width here.
std::string squeezed(std::string text) {
  for (std::size_t at = text.find("  "); at != text.npos; at = text.find("  ")) {
    text.erase(at, 1);
  }
  return text;
}

TEST(ExplainText, TellsTheLifeOfAKey) {
  const InspectProgram program;
  program.directory.write("1.conf",
                          "[Own]\nK=a\nK=\nK=${nope};${USER};${system:x}\nL=${config:Own/K}\n");
  const std::string user = Testing::thisUser().name;
  EXPECT_EQ(squeezed(program.text({"explain", "Own/K", "--color=never"})),
            "Own/K = " + user +
                "\nOwn/K = ${system:x}\n No output reads this key.\n\n"
                "Assigned, in load order:\n"
                " 1.conf:2 a # cleared by 1.conf:3\n"
                " 1.conf:3 K= # clears the key\n"
                " 1.conf:4 ${nope} # left out: a template failed\n"
                " ${nope} # has an unknown name\n"
                " 1.conf:4 ${USER} # counts\n"
                " ${USER} # gives '" +
                user +
                "'\n"
                " 1.conf:4 ${system:x} # counts\n"
                " ${system:x} # has not been run (--run)\n\n"
                "Becomes:\n config [Own] K=" +
                user + ";${system:x}\n");
}

TEST(ExplainText, TellsWhyAValueIsLeftOut) {
  const InspectProgram program;
  program.directory.write("1.conf", "[O]\nK=${a;$b\n");
  const std::string text = squeezed(program.text({"explain", "O/K", "--color=never"}));
  EXPECT_NE(text.find("${a # left out: a template has no '}'\n"), std::string::npos) << text;
  EXPECT_NE(text.find("$b # left out: a '$' begins no template\n"), std::string::npos) << text;
}

TEST(ExplainText, SaysWhatIsNoFile) {
  const InspectProgram program;
  program.directory.write("1.conf", "[O]\nK=${envfile:/dev/zero:X}\n");
  const std::string text = squeezed(program.text({"explain", "O/K", "--color=never"}));
  EXPECT_NE(text.find(" # cannot be read: it is a device\n"), std::string::npos) << text;
}

TEST(ExplainText, KnowsThatARefusedLineBecomesNothing) {
  const InspectProgram program;
  program.directory.write("1.conf", "[O\nK=1\n");
  const std::string text = squeezed(program.text({"explain", "[O/K", "--color=never"}));
  EXPECT_NE(text.find(" 1.conf:2 1 # counts\n"), std::string::npos) << text;
  EXPECT_EQ(text.find("Becomes"), std::string::npos) << text;
}

TEST(ExplainText, FollowsReferences) {
  const InspectProgram program;
  program.directory.write("1.conf", "[O]\nK=${config:O/L};b${config:O/M}\nL=${config:O/N}\nN=n\n");
  const std::string text = squeezed(program.text({"explain", "O/K", "--color=never"}));
  EXPECT_NE(text.find("\nReferences of ${config:O/L}:\n O/L = n 1.conf:3\n O/N = n 1.conf:4\n"),
            std::string::npos)
      << text;
  EXPECT_NE(text.find("\nReferences of b${config:O/M}:\n O/M is not set\n"), std::string::npos)
      << text;
}

TEST(ExplainText, ColoursWhatItRemarks) {
  const InspectProgram program;
  program.directory.write("1.conf", "[O]\nK=${config:O/L}${config:O/L}\nL=${config:O/M}\nM=m\n");
  const std::string text = program.text({"explain", "O/K", "--color=always"});
  EXPECT_NE(text.find("\x1b[36m# as above\x1b[0m"), std::string::npos) << text;
}

TEST(ExplainText, FollowsNoReferenceTwice) {
  const InspectProgram program;
  program.directory.write("1.conf",
                          "[O]\nK=${config:O/L}${config:O/M}${config:O/N}\n"
                          "L=l${config:O/N}\nM=${config:O/L}\nN=n\n");
  const std::string text = squeezed(program.text({"explain", "O/K", "--color=never"}));
  EXPECT_NE(text.find("\nReferences:\n O/L = ln 1.conf:3\n O/N = n 1.conf:5\n O/M = ln 1.conf:4\n"
                      " O/L = ln 1.conf:3 # as above\n O/N = n 1.conf:5\n\n"),
            std::string::npos)
      << text;
}

TEST(ExplainText, NamesACircle) {
  const InspectProgram program;
  program.directory.write("1.conf", "[O]\nK=${config:O/K}\n");
  const std::string text = squeezed(program.text({"explain", "O/K", "--color=never"}));
  EXPECT_NE(text.find(" A circle: O/K -> O/K. The value is empty.\n"), std::string::npos) << text;
}

TEST(ExplainText, ShowsTheLinesOfOutputs) {
  const InspectProgram program;
  program.directory.write("1.conf", "[Config]\nHostname=a\nHostname=b\nUseIds=x\n");
  const std::string host = squeezed(program.text({"explain", "Config/Hostname", "--color=never"}));
  EXPECT_NE(host.find("# overridden by 1.conf:3\n"), std::string::npos) << host;
  EXPECT_NE(host.find("\nBecomes:\n config [Config] Hostname=a;b\n lxc lxc.uts.name = b\n"),
            std::string::npos)
      << host;
  const std::string flag = program.text({"explain", "Config/UseIds", "--color=never"});
  EXPECT_TRUE(flag.starts_with("Config/UseIds = x  does not fit its type\n")) << flag;
  EXPECT_NE(
      flag.find("nothing in place of ro.quoll.host_user_id (written when Config/UseIds is true)"),
      std::string::npos)
      << flag;
}

}  // namespace
}  // namespace Cradle::Inspect
