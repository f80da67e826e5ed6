// SPDX-License-Identifier: MIT
#include "main/options.h"

#include <cerrno>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

namespace Cradle::CommandLine {
namespace {

constexpr std::uint32_t kAllOnes = 4294967295U;

// One option applied to fresh settings.
struct Applied {
  bool accepted = false;
  Settings settings;
  std::string errors;
};

Applied applied(std::string_view name, const std::vector<std::string>& values) {
  Applied result;
  for (const Option& option : options()) {
    for (const std::string& value : values) {
      if (option.name == name) {
        result.accepted = option.apply(result.settings, value, result.errors);
      }
    }
  }
  return result;
}

using Directories = std::vector<std::string>;

// The table

TEST(Options, AreThoseOfTheUsageTextInItsOrder) {
  std::vector<std::string_view> names;
  for (const Option& option : options()) {
    names.push_back(option.name);
  }
  EXPECT_EQ(names, (std::vector<std::string_view>{"--type", "--config", "--configs", "--user-id",
                                                  "--instance", "--base-uid", "--log-level"}));
}

TEST(Options, HaveDistinctNamesThatBeginWithTwoDashes) {
  std::set<std::string_view> names;
  for (const Option& option : options()) {
    EXPECT_TRUE(names.insert(option.name).second) << option.name;
    EXPECT_TRUE(option.name.starts_with("--")) << option.name;
    EXPECT_GT(option.name.size(), 2U) << option.name;
  }
}

TEST(Options, AllTakeAValueAndTellWhenItIsMissing) {
  for (const Option& option : options()) {
    EXPECT_FALSE(option.placeholder.empty()) << option.name;
    EXPECT_NE(option.apply, nullptr) << option.name;
    EXPECT_TRUE(option.missingValue.starts_with(std::string(option.name) + " needs value."))
        << option.name;
  }
}

TEST(Options, AllHaveAHelpTextThatFollowsTheirColumn) {
  for (const Option& option : options()) {
    EXPECT_FALSE(option.help.empty()) << option.name;
    EXPECT_LT(option.name.size() + 1 + option.placeholder.size(), 27U) << option.name;
  }
}

TEST(Options, KnowTheDefaultDirectory) {
  EXPECT_EQ(kDefaultDirectory, "/etc/cradle.conf.d");
}

TEST(Options, StartFromTheDefaultSettings) {
  const Settings settings;
  EXPECT_EQ(settings.type, OutputType::Config);
  EXPECT_EQ(settings.directories, Directories{});
  EXPECT_EQ(settings.instance, "default");
  EXPECT_EQ(settings.userId, kAllOnes);
  EXPECT_EQ(settings.baseUid, kAllOnes);
  EXPECT_EQ(settings.logLevel, "");
  EXPECT_EQ(settings.output, "");
}

// Values

TEST(Options, TakeATypeByItsExactWord) {
  EXPECT_EQ(applied("--type", {"config"}).settings.type, OutputType::Config);
  EXPECT_EQ(applied("--type", {"property"}).settings.type, OutputType::Property);
  EXPECT_EQ(applied("--type", {"lxc"}).settings.type, OutputType::Lxc);
  EXPECT_EQ(static_cast<int>(OutputType::Config), 0);
  EXPECT_EQ(static_cast<int>(OutputType::Property), 1);
  EXPECT_EQ(static_cast<int>(OutputType::Lxc), 2);
}

TEST(Options, AppendADirectoryAsItStands) {
  EXPECT_EQ(applied("--config", {"a", "", "b:c", "a"}).settings.directories,
            (Directories{"a", "", "b:c", "a"}));
}

TEST(Options, SplitDirectoriesAtEveryColon) {
  struct Split {
    std::string value;
    Directories directories;
  };
  for (const Split& row : {
           Split{"a", {"a"}},
           Split{"a:b", {"a", "b"}},
           Split{"a::b", {"a", "", "b"}},
           Split{"a:", {"a"}},
           Split{"/a::", {"/a", ""}},
           Split{":/a", {"", "/a"}},
           Split{":", {""}},
           Split{"", {}},
       }) {
    const Applied result = applied("--configs", {row.value});
    EXPECT_TRUE(result.accepted) << row.value;
    EXPECT_EQ(result.settings.directories, row.directories) << row.value;
  }
}

TEST(Options, TakeAnInstanceAndALogLevelAsTheyStand) {
  EXPECT_EQ(applied("--instance", {"a b"}).settings.instance, "a b");
  EXPECT_EQ(applied("--instance", {""}).settings.instance, "");
  EXPECT_EQ(applied("--log-level", {"Nonsense"}).settings.logLevel, "Nonsense");
  EXPECT_EQ(applied("--log-level", {"debug", ""}).settings.logLevel, "");
}

struct Id {
  const char* value;
  std::uint32_t id;
};

constexpr Id kIds[] = {
    {"0", 0},
    {"1000", 1000},
    {"12abc", 12},
    {"12 34", 12},
    {"1.9", 1},
    {"0x10", 0},
    {"010", 10},
    {" \t\n7", 7},
    {"+7", 7},
    {"-0", 0},
    {"-1", kAllOnes},
    {"-2", 4294967294},
    {"2147483647", 2147483647},
    {"-2147483648", 2147483648},
};

TEST(Options, ReadTheLeadingIntegerOfAnId) {
  for (const Id& row : kIds) {
    const Applied user = applied("--user-id", {row.value});
    EXPECT_TRUE(user.accepted) << row.value;
    EXPECT_EQ(user.settings.userId, row.id) << row.value;
    EXPECT_EQ(user.settings.baseUid, kAllOnes) << row.value;
    EXPECT_EQ(user.errors, "") << row.value;
    const Applied base = applied("--base-uid", {row.value});
    EXPECT_TRUE(base.accepted) << row.value;
    EXPECT_EQ(base.settings.baseUid, row.id) << row.value;
    EXPECT_EQ(base.settings.userId, kAllOnes) << row.value;
    EXPECT_EQ(base.errors, "") << row.value;
  }
}

// Failures

TEST(Options, RefuseEveryOtherType) {
  for (const char* const value : {"LXC", "Config", "", " lxc", "lxc ", "prop", "configs", "2"}) {
    const Applied result = applied("--type", {value});
    EXPECT_FALSE(result.accepted) << value;
    EXPECT_EQ(result.errors,
              "Invalid value for --type. It must be one of \"config\", \"property\" and \"lxc\".\n")
        << value;
  }
}

TEST(Options, RefuseAnIdWithoutALeadingInteger) {
  for (const std::string value : {"", "x", "-", "+", " ", "--", "- 1", "+-1", "x12", "--config"}) {
    for (const std::string name : {"--user-id", "--base-uid"}) {
      const Applied result = applied(name, {value});
      EXPECT_FALSE(result.accepted) << value;
      EXPECT_EQ(result.errors, name + ": " + value + " does not look like an integer.\n");
    }
  }
}

TEST(Options, TakeAnIdWhateverHasFailedBefore) {
  errno = ERANGE;
  EXPECT_TRUE(applied("--user-id", {"1000"}).accepted);
}

TEST(Options, RefuseAnIdBeyond32BitsWithASign) {
  for (const std::string value :
       {"2147483648", "-2147483649", "4294967295", "99999999999", "99999999999999999999",
        "-99999999999999999999", "2147483648abc", " 9223372036854775807", "-9223372036854775808"}) {
    for (const std::string name : {"--user-id", "--base-uid"}) {
      const Applied result = applied(name, {value});
      EXPECT_FALSE(result.accepted) << value;
      EXPECT_EQ(result.errors, name + ": " + value + " is too big/small.\n");
    }
  }
}

}  // namespace
}  // namespace Cradle::CommandLine
