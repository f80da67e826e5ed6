// SPDX-License-Identifier: MIT
#include <string>

#include <gtest/gtest.h>

#include "inspect/command_functions.h"
#include "inspect/finding_kinds.h"
#include "support/inspect_program.h"
#include "support/json_text.h"

namespace Cradle::Inspect {
namespace {

using Testing::InspectProgram;
using Testing::jsonAt;
using Testing::jsonSizeAt;

TEST(CheckCommand, EndsWellWithoutErrors) {
  const InspectProgram program;
  program.directory.write("1.conf",
                          "[Config]\nAppIdManglingType=None\nOwn=${env:CRADLE_NOT_SET}\n");
  const Answer answer = program.run({"check"});
  EXPECT_EQ(answer.status, kFine);
  EXPECT_NE(answer.text.find("1.conf:3: warning: Config/Own is no key that is known."),
            std::string::npos);
  EXPECT_NE(answer.text.find("\n    This is fine where it is optional.\n"), std::string::npos);
  EXPECT_EQ(program.run({"check", "--strict"}).status, kFindings);
}

TEST(CheckCommand, CountsWhatItFinds) {
  const InspectProgram program;
  program.directory.write("1.conf", "bad\n");
  const Answer answer = program.run({"check"});
  EXPECT_EQ(answer.status, kFindings);
  EXPECT_NE(answer.text.find("2 errors, "), std::string::npos) << answer.text;
  const std::string document = program.run({"check", "--format=json"}).text;
  EXPECT_EQ(jsonAt(document, "/errors"), "2");
  EXPECT_EQ(jsonAt(document, "/findings/0/kind"), R"("missing-key")");
  EXPECT_EQ(jsonAt(document, "/findings/1/line"), "1");
}

TEST(FindingsCommand, ListsEveryKind) {
  const InspectProgram program;
  const std::string text = program.text({"findings"});
  EXPECT_EQ(jsonSizeAt(program.text({"findings", "--format=json"}), "/kinds"),
            findingKinds().size());
  for (const FindingKind& kind : findingKinds()) {
    EXPECT_NE(text.find(std::string(kind.name) + " ("), std::string::npos) << kind.name;
  }
}

}  // namespace
}  // namespace Cradle::Inspect
