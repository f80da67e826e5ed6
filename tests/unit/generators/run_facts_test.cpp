#include "generators/run_facts.h"

#include <filesystem>

#include <gtest/gtest.h>

#include "support/log_capture.h"
#include "support/temporary_directory.h"

namespace Cradle::Generators {
namespace {

using Parser::ConfigParser;
using Testing::LogCapture;
using Testing::TemporaryDirectory;

const RunFacts kFacts{4294967294, "user name", "/home/u", "inst", 3000000000};

class RunFactsTest : public ::testing::Test {
 protected:
  std::string templateValue(const std::string& name) {
    directory_.write("x.conf", "[G]\nKey=[${" + name + "}]\n");
    EXPECT_TRUE(loadConfiguration(parser_, {directory_.path()}));
    std::string value;
    parser_.getValue("G", "Key", value);
    return value;
  }

  TemporaryDirectory directory_;
  ConfigParser parser_{-1};
};

TEST_F(RunFactsTest, BecomeHookArgumentsInTheirOrder) {
  EXPECT_EQ(hookArguments(kFacts),
            (std::vector<std::string>{"4294967294", "user name", "/home/u", "inst", "3000000000"}));
}

TEST_F(RunFactsTest, BecomeNamedTemplates) {
  addNamedTemplates(parser_, kFacts);
  EXPECT_EQ(templateValue("HOME"), "[/home/u]");
  EXPECT_EQ(templateValue("INSTANCE"), "[inst]");
  EXPECT_EQ(templateValue("USER"), "[user name]");
  EXPECT_EQ(templateValue("USER_ID"), "[4294967294]");
}

TEST_F(RunFactsTest, PointTheOdmTemplateAtThePartitionThatThereIs) {
  addNamedTemplates(parser_, kFacts);
  EXPECT_EQ(templateValue("ODM_DIR"), std::filesystem::exists("/odm/lib") ? "[/odm]" : "[/vendor]");
}

TEST_F(RunFactsTest, LeaveTemplatesThatAreThereAlready) {
  parser_.addTemplate("HOME", "/elsewhere");
  addNamedTemplates(parser_, kFacts);
  EXPECT_EQ(templateValue("HOME"), "[/elsewhere]");
}

TEST_F(RunFactsTest, LoadTheConfigurationOfAllDirectoriesInOrder) {
  directory_.write("a/x.conf", "[G]\nKey=a\n");
  directory_.write("b/x.conf", "[G]\nKey=b\n");
  const LogCapture log(LogCapture::Level::LogDebug);
  EXPECT_TRUE(loadConfiguration(
      parser_, {directory_.path("b"), directory_.path("missing"), directory_.path("a")}));
  std::vector<std::string> values;
  parser_.getValue("G", "Key", values);
  EXPECT_EQ(values, (std::vector<std::string>{"b", "a"}));
  EXPECT_EQ(log.text(), "");
}

// Failures

TEST_F(RunFactsTest, NameTheDirectoriesWithoutConfiguration) {
  const std::string first = directory_.path("a");
  const std::string second = directory_.path("b/");
  {
    const LogCapture log(LogCapture::Level::LogDebug);
    EXPECT_FALSE(loadConfiguration(parser_, {first}));
    EXPECT_EQ(log.text(), "ERROR: No configuration to read in " + first + "\n");
  }
  {
    const LogCapture log(LogCapture::Level::LogDebug);
    EXPECT_FALSE(loadConfiguration(parser_, {first, second}));
    EXPECT_EQ(log.text(), "ERROR: No configuration to read in " + first + ", " + second + "\n");
  }
}

TEST_F(RunFactsTest, LeaveAnInvalidConfigurationToTheLoaderToReport) {
  const std::string file = directory_.write("a/x.conf", "[G]\nno entry\n");
  const LogCapture log;
  EXPECT_FALSE(loadConfiguration(parser_, {directory_.path("a"), directory_.path("b")}));
  EXPECT_TRUE(log.text().ends_with("ERROR: Failed to load config from '" + file +
                                   "'\n"
                                   "ERROR: Invalid configuration in " +
                                   file + "\n"))
      << log.text();
}

}  // namespace
}  // namespace Cradle::Generators
