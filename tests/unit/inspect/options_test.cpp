// SPDX-License-Identifier: MIT
#include "inspect/options.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/environment_variable.h"

namespace Cradle::Inspect {
namespace {

using Testing::EnvironmentVariable;

struct Parsed {
  std::optional<Options> options;
  std::string errors;
};

Parsed parse(std::vector<std::string> words) {
  words.insert(words.begin(), "program");
  std::vector<char*> arguments;
  for (std::string& word : words) {
    arguments.push_back(word.data());
  }
  Parsed parsed;
  parsed.options = parseOptions(arguments, parsed.errors);
  return parsed;
}

TEST(Options, HaveDefaults) {
  const Parsed parsed = parse({});
  ASSERT_TRUE(parsed.options);
  EXPECT_EQ(parsed.options->run.directories, std::vector<std::string>{"/etc/cradle.conf.d"});
  EXPECT_EQ(parsed.options->run.baseUid, 0U);
  EXPECT_EQ(parsed.options->format, OutputFormat::Text);
  EXPECT_FALSE(parsed.options->execute || parsed.options->all || parsed.options->strict);
  EXPECT_TRUE(parsed.options->words.empty());
}

TEST(Options, StandAnywhereAndInEveryForm) {
  const Parsed parsed =
      parse({"show", "--config=/a", "G/K", "-c", "/b", "-C/c:/d", "--user-id", "5", "-i", "x",
             "-b7", "-tlxc", "--format=json", "-a", "--run", "--strict", "--color", "never"});
  ASSERT_TRUE(parsed.options) << parsed.errors;
  const Options& options = *parsed.options;
  EXPECT_EQ(options.run.directories, (std::vector<std::string>{"/a", "/b", "/c", "/d"}));
  EXPECT_EQ(options.run.userId, 5U);
  EXPECT_EQ(options.run.instance, "x");
  EXPECT_EQ(options.run.baseUid, 7U);
  EXPECT_EQ(options.run.type, CommandLine::OutputType::Lxc);
  EXPECT_EQ(options.format, OutputFormat::Json);
  EXPECT_EQ(options.colour, ColourMode::Never);
  EXPECT_TRUE(options.execute && options.all && options.strict);
  EXPECT_EQ(options.words, (std::vector<std::string>{"show", "G/K"}));
}

TEST(Options, EndAtTwoHyphens) {
  const Parsed parsed = parse({"-h", "-V", "--", "-x"});
  ASSERT_TRUE(parsed.options);
  EXPECT_TRUE(parsed.options->help && parsed.options->version);
  EXPECT_EQ(parsed.options->words, std::vector<std::string>{"-x"});
}

TEST(Options, ChooseTextByItsName) {
  const Parsed parsed = parse({"--format=json", "--format=text"});
  ASSERT_TRUE(parsed.options);
  EXPECT_EQ(parsed.options->format, OutputFormat::Text);
}

TEST(Options, MakeColourWanted) {
  EXPECT_TRUE(wantsColour(ColourMode::Always));
  EXPECT_FALSE(wantsColour(ColourMode::Never));
}

TEST(Options, HaveHelpOfTheirOwn) {
  for (const OptionRow& row : optionRows()) {
    EXPECT_FALSE(row.help.empty()) << row.name;
  }
}

// Failures

// What is said of words that are refused.
std::string complaint(const std::vector<std::string>& words) {
  Parsed parsed = parse(words);
  EXPECT_FALSE(parsed.options);
  return parsed.errors;
}

TEST(Options, AreRefusedWithAReason) {
  EXPECT_EQ(complaint({"--nope"}), "--nope: unknown option\n");
  EXPECT_EQ(complaint({"-x"}), "-x: unknown option\n");
  EXPECT_EQ(complaint({"-~"}), "-~: unknown option\n");
  EXPECT_EQ(complaint({"-axz", "check"}), "-x: unknown option\n");
  EXPECT_EQ(complaint({"--co"}), "--co: unknown option\n");
  EXPECT_EQ(complaint({"--config"}), "--config: its value is missing\n");
  EXPECT_EQ(complaint({"-ac"}), "-c: its value is missing\n");
  EXPECT_EQ(complaint({"--all=1"}), "--all: takes no value\n");
  EXPECT_EQ(complaint({"--format", "yaml"}), "'yaml' is none of: text json svg\n");
  EXPECT_EQ(complaint({"--format", "\n\x1b"}), "'\\n\\x1b' is none of: text json svg\n");
  EXPECT_EQ(complaint({"--color=blue"}), "'blue' is none of: auto always never\n");
  EXPECT_EQ(complaint({"--user-id", "x"}), "--user-id: x does not look like an integer.\n");
  EXPECT_EQ(complaint({"--type", "x"}),
            "Invalid value for --type. It must be one of \"config\", \"property\" and \"lxc\".\n");
}

}  // namespace
}  // namespace Cradle::Inspect
