// SPDX-License-Identifier: MIT
#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include "inspect/command_functions.h"
#include "support/inspect_program.h"
#include "support/json_text.h"

namespace Cradle::Inspect {
namespace {

using Testing::InspectProgram;
using Testing::jsonAt;

TEST(FilesCommand, ListsWhatIsUsedAndWhatIsNot) {
  const InspectProgram program;
  for (const char* const name : {"1.conf", "old.txt"}) {
    std::filesystem::permissions(program.directory.write(name, ""), std::filesystem::perms(0644));
  }
  const std::string owner = Testing::thisUser().name;
  EXPECT_EQ(program.text({"files", "--color=never"}),
            "read  0644  " + owner + "  1.conf\n\nPassed over:\n-  0644  " + owner +
                "  old.txt  its name is not *.conf\n");
  const std::string document = program.text({"files", "--format=json"});
  EXPECT_EQ(jsonAt(document, "/used/0/action"), R"("read")");
  EXPECT_EQ(jsonAt(document, "/passed_over/0/action"), R"("pass-over")");
}

TEST(FilesCommand, SaysWhatIsWrong) {
  const InspectProgram program;
  std::filesystem::create_symlink("none", program.directory.path("1.conf"));
  const Answer answer = program.run({"files", "--color=never"});
  EXPECT_EQ(answer.status, kFindings);
  EXPECT_TRUE(answer.text.starts_with("read  ----  -  "));
  EXPECT_TRUE(answer.text.ends_with("  No such file or directory\n"));
}

}  // namespace
}  // namespace Cradle::Inspect
