// SPDX-License-Identifier: MIT
#include "generators/run_facts.h"

#include <gtest/gtest.h>

#include "support/config_text.h"
#include "support/log_capture.h"

namespace Cradle::Generators {
namespace {

using Parser::ConfigParser;
using Testing::loadText;
using Testing::LogCapture;

const RunFacts kFacts{4294967294, "user name", "/home/u", "inst", 3000000000};

class RunFactsTest : public ::testing::Test {
 protected:
  std::string templateValue(const std::string& name) {
    EXPECT_TRUE(loadText(parser_, "[G]\nKey=\nKey=[${" + name + "}]\n"));
    std::string value;
    if (parser_.hasKey("G", "Key")) {
      parser_.getValue("G", "Key", value);
    }
    return value;
  }

  ConfigParser parser_{-1};
};

TEST_F(RunFactsTest, BecomeHookArgumentsInTheirOrder) {
  EXPECT_EQ(hookArguments(kFacts),
            (std::vector<std::string>{"4294967294", "user name", "/home/u", "inst", "3000000000"}));
}

TEST_F(RunFactsTest, BecomeNamedTemplates) {
  addNamedTemplates(parser_, kFacts, true);
  EXPECT_EQ(templateValue("HOME"), "[/home/u]");
  EXPECT_EQ(templateValue("INSTANCE"), "[inst]");
  EXPECT_EQ(templateValue("USER"), "[user name]");
  EXPECT_EQ(templateValue("USER_ID"), "[4294967294]");
}

TEST_F(RunFactsTest, LeaveTemplatesThatAreThereAlready) {
  parser_.addTemplate("HOME", "/elsewhere");
  addNamedTemplates(parser_, kFacts, true);
  EXPECT_EQ(templateValue("HOME"), "[/elsewhere]");
}

TEST_F(RunFactsTest, DefineNoOdmTemplateWhereNoneIsWanted) {
  addNamedTemplates(parser_, kFacts, false);
  EXPECT_EQ(templateValue("USER"), "[user name]");
  const LogCapture log;
  EXPECT_EQ(templateValue("ODM_DIR"), "");
  EXPECT_EQ(log.text(), "ERROR: No such template 'ODM_DIR'\n");
}

}  // namespace
}  // namespace Cradle::Generators
