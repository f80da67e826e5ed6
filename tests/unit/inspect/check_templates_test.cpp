// SPDX-License-Identifier: MIT
#include <string>

#include <gtest/gtest.h>

#include "inspect/findings.h"
#include "support/inspection_bench.h"

namespace Cradle::Inspect {
namespace {

using Testing::InspectionBench;

TEST(CheckTemplates, FindsEveryKindOfMistake) {
  const InspectionBench bench({{"1.conf",
                                "[A]\nB=${HOMR}\nC=${evn:X}\nD=${config:A}\nE=${USER\n"
                                "F=${system:a;b}\nG=5$\nH=${env:CRADLE_NOT_SET}\n"
                                "I=${system:echo}\nJ=${USER}${x\nK=${x;y\n"}});
  EXPECT_EQ(
      bench.found(checkTemplates),
      "1.conf:2 unknown-name '${HOMR}' is not known (did you mean HOME?). The value is left "
      "out.\n"
      "1.conf:3 unknown-format The format of '${evn:X}' is not known (did you mean env?). The "
      "value is left out.\n"
      "1.conf:4 malformed-template '${config:A}' is not what its format asks for. The value is "
      "left out.\n"
      "1.conf:5 unclosed-template The template in '${USER' has no '}'. The value is left "
      "out.\n"
      "1.conf:6 split-template A ';' splits the template in '${system:a;b}'. Its beginning is "
      "left out, its rest is a value.\n"
      "1.conf:7 stray-dollar A '$' in '5$' stands before neither '{' nor '$'. The value is "
      "left out.\n"
      "1.conf:10 unclosed-template The template in '${USER}${x' has no '}'. The value is left "
      "out.\n"
      "1.conf:11 unclosed-template The template in '${x' has no '}'. The value is left out.\n"
      "1.conf:8 no-template-value '${env:CRADLE_NOT_SET}' gives nothing here. The value is "
      "left out.\n"
      "1.conf:9 command-not-run '${system:echo}' is a command, which has not been run.\n");
}

TEST(CheckTemplates, AsksForEachNameThatIsNearlyMeant) {
  for (const std::string name : {"HOME", "INSTANCE", "ODM_DIR", "USER", "USER_ID"}) {
    const std::string text = "[A]\nB=${" + name + "X}\n";
    const InspectionBench bench({{"1.conf", text}});
    const std::string question = "(did you mean " + name + "?)";
    EXPECT_NE(bench.found(checkTemplates).find(question), std::string::npos) << name;
  }
}

TEST(CheckTemplates, FindsWhatMightKeepARunWaiting) {
  const InspectionBench bench({{"1.conf", "[A]\nB=${envfile:/dev/zero:X}\n"}});
  EXPECT_EQ(bench.found(checkTemplates),
            "1.conf:2 no-template-file '${envfile:/dev/zero:X}' cannot be read: it is a device. "
            "The value is not known.\n");
}

TEST(CheckTemplates, FindsNothingInTemplatesThatGiveText) {
  const InspectionBench bench({{"1.conf", "[A]\nK=${USER}$${x\nL=${config:A/K}\nM=\n"}});
  EXPECT_EQ(bench.found(checkTemplates), "");
}

}  // namespace
}  // namespace Cradle::Inspect
