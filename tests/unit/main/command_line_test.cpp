// SPDX-License-Identifier: MIT
#include "main/command_line.h"

#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "base/text.h"

namespace Cradle::CommandLine {
namespace {

constexpr std::uint32_t kAllOnes = 4294967295U;

constexpr std::string_view kUsage =
    "USAGE:\n"
    "    ./program [OPTIONS] [--] <output_file>\n"
    "\n"
    "OPTIONS:\n"
    "    --type config|lxc|property Generate a config, lxc or property file. Defaults to config "
    "file.\n"
    "    --config <input_directory> Directory to read. Defaults to /etc/cradle.conf.d\n"
    "    --configs <directories>    Directories to read, separated by ':'.\n"
    "    --user-id <UID>            UID for user. Defaults to seat0 active user.\n"
    "    --instance <name>          Instance name for the container.\n"
    "    --base-uid <UID>           UID as which cradle runs. Defaults to 0.\n"
    "    --log-level <level>        Log level. Defaults to warning.\n"
    "\n"
    "ARGS:\n"
    "    <output_file>              Path to file to write. Required.\n";

struct Parsed {
  bool accepted = false;
  Settings settings;
  std::string output;
  std::string errors;
};

Parsed parsed(const std::vector<std::string>& arguments) {
  std::vector<const char*> pointers;
  for (const std::string& argument : arguments) {
    pointers.push_back(argument.c_str());
  }
  Parsed result;
  Complaint complaint;
  result.accepted = parse(pointers, result.settings, complaint);
  result.output = complaint.usage;
  result.errors = complaint.errors;
  return result;
}

// The command line "./program ..." of arguments that stand between single blanks; two blanks in a
// row enclose an empty one.
Parsed run(std::string_view line) {
  std::vector<std::string> arguments{"./program"};
  for (const std::string_view argument : split(line, ' ', EmptyParts::KeepAll)) {
    arguments.emplace_back(argument);
  }
  return parsed(arguments);
}

// The settings of a command line that must be right.
Settings settingsOf(std::string_view line) {
  const Parsed result = run(line);
  EXPECT_TRUE(result.accepted) << line;
  EXPECT_EQ(result.output, "") << line;
  EXPECT_EQ(result.errors, "") << line;
  return result.settings;
}

using Directories = std::vector<std::string>;

TEST(CommandLine, NeedsNothingButAnOutputFile) {
  const Settings settings = settingsOf("out.conf");
  EXPECT_EQ(settings.output, "out.conf");
  EXPECT_EQ(settings.type, OutputType::Config);
  EXPECT_EQ(settings.directories, Directories{"/etc/cradle.conf.d"});
  EXPECT_EQ(settings.instance, "default");
  EXPECT_EQ(settings.userId, kAllOnes);
  EXPECT_EQ(settings.baseUid, 0U);
  EXPECT_EQ(settings.logLevel, "");
}

TEST(CommandLine, TakesEveryOption) {
  const Settings settings = settingsOf(
      "--log-level debug --base-uid 5 --instance i --user-id 6 --configs a:b --config c --type lxc "
      "out");
  EXPECT_EQ(settings.output, "out");
  EXPECT_EQ(settings.type, OutputType::Lxc);
  EXPECT_EQ(settings.directories, (Directories{"a", "b", "c"}));
  EXPECT_EQ(settings.instance, "i");
  EXPECT_EQ(settings.userId, 6U);
  EXPECT_EQ(settings.baseUid, 5U);
  EXPECT_EQ(settings.logLevel, "debug");
}

TEST(CommandLine, TakesTheFirstOtherArgumentAsTheOutputFile) {
  for (const std::string_view output : {"-x", "-", "-type", "=", "type", "a/b", ""}) {
    EXPECT_EQ(settingsOf(output).output, output);
  }
}

TEST(CommandLine, TakesWhateverFollowsTwoDashesAsTheOutputFile) {
  EXPECT_EQ(settingsOf("-- --weird-name").output, "--weird-name");
  EXPECT_EQ(settingsOf("-- --type").output, "--type");
  EXPECT_EQ(settingsOf("-- --").output, "--");
  EXPECT_EQ(settingsOf("--type lxc -- out").output, "out");
}

TEST(CommandLine, TakesTheArgumentAfterAnOptionAsItsValueWhateverItLooksLike) {
  EXPECT_EQ(settingsOf("--instance --type out").instance, "--type");
  EXPECT_EQ(settingsOf("--instance -- out").instance, "--");
  EXPECT_EQ(settingsOf("--instance  out").instance, "");
  EXPECT_EQ(settingsOf("--config --bogus out").directories, Directories{"--bogus"});
}

TEST(CommandLine, KeepsAllDirectoriesInTheirOrder) {
  EXPECT_EQ(settingsOf("--config a --configs b:c --config d --configs e out").directories,
            (Directories{"a", "b", "c", "d", "e"}));
  EXPECT_EQ(settingsOf("--configs a::b out").directories, (Directories{"a", "", "b"}));
}

TEST(CommandLine, ReadsTheDefaultDirectoryOnlyWhereNoneIsGiven) {
  EXPECT_EQ(settingsOf("--configs  out").directories, Directories{"/etc/cradle.conf.d"});
  EXPECT_EQ(settingsOf("--config  out").directories, Directories{""});
  EXPECT_EQ(settingsOf("--configs : out").directories, Directories{""});
}

TEST(CommandLine, TakesTheLastValueOfARepeatedOption) {
  const Settings settings = settingsOf(
      "--type lxc --instance a --user-id 1 --base-uid 2 --log-level debug --type property "
      "--instance b --user-id 3 --base-uid 4 --log-level info out");
  EXPECT_EQ(settings.type, OutputType::Property);
  EXPECT_EQ(settings.instance, "b");
  EXPECT_EQ(settings.userId, 3U);
  EXPECT_EQ(settings.baseUid, 4U);
  EXPECT_EQ(settings.logLevel, "info");
}

TEST(CommandLine, TakesAnIdOfMinusOneAsNone) {
  EXPECT_EQ(settingsOf("--user-id -1 out").userId, kAllOnes);
  EXPECT_EQ(settingsOf("--base-uid -1 out").baseUid, 0U);
  EXPECT_EQ(settingsOf("--base-uid 5 --base-uid -1 out").baseUid, 0U);
  EXPECT_EQ(settingsOf("--base-uid -2 out").baseUid, 4294967294U);
}

TEST(CommandLine, LeavesALogLevelToTheLogger) {
  EXPECT_EQ(settingsOf("--log-level nonsense out").logLevel, "nonsense");
  EXPECT_EQ(settingsOf("--log-level  out").logLevel, "");
  EXPECT_EQ(settingsOf("--log-level debug --log-level  out").logLevel, "");
}

TEST(Usage, ListsEveryOption) {
  EXPECT_EQ(usage("./program"), kUsage);
}

TEST(Usage, ShowsTheProgramAsItWasCalled) {
  EXPECT_TRUE(
      usage("/usr/bin/other name")
          .starts_with(
              "USAGE:\n    /usr/bin/other name [OPTIONS] [--] <output_file>\n\nOPTIONS:\n"));
}

// Failures

constexpr const char* kTooMany = "Too many arguments! Only one output file may be specified.";
constexpr const char* kNoOutput = "output_file is required! Please specify a file to write.";
constexpr const char* kBadType =
    "Invalid value for --type. It must be one of \"config\", \"property\" and \"lxc\".";

struct Refusal {
  std::string_view line;
  std::string message;
};

TEST(CommandLine, RefusesTheFirstFaultWithItsMessageAndTheUsage) {
  for (const Refusal& row : {
           Refusal{"--type",
                   "--type needs value. It must be one of \"config\", \"property\" and \"lxc\"."},
           Refusal{"--config",
                   "--config needs value. Specify alternative config directory to read."},
           Refusal{"--configs", "--configs needs value."},
           Refusal{"--instance", "--instance needs value. Specify a name."},
           Refusal{"--user-id", "--user-id needs value. Specify an UID value."},
           Refusal{"--base-uid", "--base-uid needs value. Specify an UID value."},
           Refusal{"--log-level", "--log-level needs value."},
           Refusal{"--config a --configs", "--configs needs value."},
           Refusal{"--type LXC out", kBadType},
           Refusal{"--type LXC --bogus", kBadType},
           Refusal{"--user-id x out", "--user-id: x does not look like an integer."},
           Refusal{"--user-id  out", "--user-id:  does not look like an integer."},
           Refusal{"--user-id 99999999999 out", "--user-id: 99999999999 is too big/small."},
           Refusal{"--user-id 4294967295 out", "--user-id: 4294967295 is too big/small."},
           Refusal{"--base-uid x out", "--base-uid: x does not look like an integer."},
           Refusal{"--base-uid -2147483649 out", "--base-uid: -2147483649 is too big/small."},
           Refusal{"--", kNoOutput},
           Refusal{"--type lxc", kNoOutput},
           Refusal{"--type lxc --", kNoOutput},
           Refusal{"--instance out", kNoOutput},
           Refusal{"-x out", kTooMany},
           Refusal{"out.conf --type lxc", kTooMany},
           Refusal{"out --bogus", kTooMany},
           Refusal{"out --", kTooMany},
           Refusal{"out ", kTooMany},
           Refusal{"-- out more", kTooMany},
           Refusal{"a b c d", kTooMany},
       }) {
    const Parsed result = run(row.line);
    EXPECT_FALSE(result.accepted) << row.line;
    EXPECT_EQ(result.errors, row.message + "\n") << row.line;
    EXPECT_EQ(result.output, kUsage) << row.line;
  }
}

TEST(CommandLine, RefusesAnUnknownOptionWithoutTheUsage) {
  for (const Refusal& row : {
           Refusal{"--bogus x out", "--bogus: unknown argument"},
           Refusal{"--bogus", "--bogus: unknown argument"},
           Refusal{"--Type lxc out", "--Type: unknown argument"},
           Refusal{"--type=lxc out", "--type=lxc: unknown argument"},
           Refusal{"--conf a out", "--conf: unknown argument"},
           Refusal{"--configsx a out", "--configsx: unknown argument"},
           Refusal{"--- out", "---: unknown argument"},
           Refusal{"--help", "--help: unknown argument"},
           Refusal{"--type lxc --bogus", "--bogus: unknown argument"},
       }) {
    const Parsed result = run(row.line);
    EXPECT_FALSE(result.accepted) << row.line;
    EXPECT_EQ(result.errors, row.message + "\n") << row.line;
    EXPECT_EQ(result.output, "") << row.line;
  }
}

TEST(CommandLine, RefusesToRunWithoutAnArgument) {
  const Parsed result = parsed({"./program"});
  EXPECT_FALSE(result.accepted);
  EXPECT_EQ(result.errors, "Needs at least one argument!\n");
  EXPECT_EQ(result.output, kUsage);
}

TEST(CommandLine, RefusesToRunWithoutEvenAProgramName) {
  const Parsed result = parsed({});
  EXPECT_FALSE(result.accepted);
  EXPECT_EQ(result.errors, "Needs at least one argument!\n");
  EXPECT_TRUE(result.output.starts_with("USAGE:\n     [OPTIONS] [--] <output_file>\n"));
}

}  // namespace
}  // namespace Cradle::CommandLine
