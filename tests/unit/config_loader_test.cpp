// SPDX-License-Identifier: MIT
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "config_parser.h"
#include "support/config_text.h"
#include "support/log_capture.h"
#include "support/temporary_directory.h"

namespace Cradle::Parser {
namespace {

using Testing::loadText;
using Testing::LogCapture;
using Testing::TemporaryDirectory;
using Testing::valuesOf;

class ConfigLoader : public ::testing::Test {
 protected:
  ConfigLoader() { parser_.addTemplate("EMPTY", ""); }

  bool load(std::string_view text) { return loadText(parser_, text); }

  std::string values(std::string_view key) const { return valuesOf(parser_, "G", key); }

  void write(std::string_view file, std::string_view text) { directory_.write(file, text); }
  std::string path(std::string_view name) const { return directory_.path(name); }

  LoadResult loadAll(const std::vector<std::string>& names) {
    std::vector<std::string> directories;
    for (const std::string& name : names) {
      directories.push_back(path(name));
    }
    return parser_.loadDirectories(directories);
  }

  TemporaryDirectory directory_;
  LogCapture log_;
  ConfigParser parser_{-1};
};

// Values

struct Assignment {
  const char* value;
  const char* list;    // the values of a list key that held "old"
  const char* single;  // the value of a single-value key that held "old"
};

constexpr Assignment kAssignments[] = {
    {"a", "|old|a|", "|a|"},
    {"a;b;c", "|old|a|b|c|", "|c|"},
    {"a;;b", "|old|a|b|", "|b|"},
    {";a", "|old|a|", "|a|"},
    {"a;", "|old|a|", "|a|"},
    {"a;;", "|old|a|", "|a|"},
    {" a ; b ", "|old| a | b |", "| b |"},
    {" ", "|old| |", "| |"},
    {"a=b", "|old|a=b|", "|a=b|"},
    {"old", "|old|old|", "|old|"},
    {"$$5", "|old|$5|", "|$5|"},
    {"x${config:X/Y}", "|old|xy|", "|xy|"},
    // Nothing to keep
    {"", "missing", "missing"},
    {";", "|old|", "|old|"},
    {";;", "|old|", "|old|"},
    {"${EMPTY}", "|old|", "||"},
    {"a;${EMPTY}", "|old|a|", "||"},
    {"${EMPTY};a", "|old|a|", "|a|"},
};

TEST_F(ConfigLoader, StoresThePartsOfAValueByTheModeOfTheKey) {
  for (const Assignment& row : kAssignments) {
    ConfigParser parser(-1);
    parser.addTemplate("EMPTY", "");
    parser.addKnownKey("G", "List", ValueList);
    parser.addKnownKey("G", "Single", SingleValue);
    parser.addKnownKey("X", "Y", SingleValue);
    const std::string value = row.value;
    ASSERT_TRUE(loadText(parser, "[X]\nY=y\n[G]\nList=old\nSingle=old\n"));
    ASSERT_TRUE(loadText(parser, "[G]\nList=" + value + "\nSingle=" + value + "\n"));
    EXPECT_EQ(valuesOf(parser, "G", "List"), row.list) << value;
    EXPECT_EQ(valuesOf(parser, "G", "Single"), row.single) << value;
  }
  EXPECT_EQ(log_.text(), "");
}

TEST_F(ConfigLoader, TakesEveryKeyAsAListWhereNoneIsDeclared) {
  ASSERT_TRUE(load("[G]\nK=a;b\nK=c\n"));
  EXPECT_EQ(values("K"), "|a|b|c|");
}

TEST_F(ConfigLoader, TakesNoValuesForAKeyOfAnyOtherMode) {
  parser_.addKnownKey("G", "K", 2);
  ASSERT_TRUE(load("[G]\nK=a\n"));
  EXPECT_EQ(values("K"), "missing");
  EXPECT_FALSE(parser_.hasGroup("G"));
}

TEST_F(ConfigLoader, PassesOverUndeclaredKeysSilently) {
  parser_.addKnownKey("G", "K", ValueList);
  ASSERT_TRUE(load("[G]\nK=a\nL=b\nM=${NONE}\n[H]\nK=c\n"));
  EXPECT_EQ(values("K"), "|a|");
  EXPECT_EQ(values("L"), "missing");
  EXPECT_FALSE(parser_.hasGroup("H"));
  EXPECT_EQ(log_.text(), "");
}

TEST_F(ConfigLoader, DoesNotClearAnUndeclaredKey) {
  ASSERT_TRUE(load("[G]\nK=a\n"));
  parser_.addKnownKey("G", "L", ValueList);
  ASSERT_TRUE(load("[G]\nK=\n"));
  EXPECT_EQ(values("K"), "|a|");
}

TEST_F(ConfigLoader, ALaterEmptyAssignmentClearsTheKey) {
  ASSERT_TRUE(load("[G]\nK=a;b\nL=c\n"));
  ASSERT_TRUE(load("[G]\nK=\n"));
  EXPECT_EQ(values("K"), "missing");
  EXPECT_EQ(values("L"), "|c|");
  ASSERT_TRUE(load("[G]\nK=d\n"));
  EXPECT_EQ(values("K"), "|d|");
}

TEST_F(ConfigLoader, AnEmptyAssignmentClearsAKeyOfAnyOtherModeToo) {
  ASSERT_TRUE(load("[G]\nK=a\n"));
  parser_.addKnownKey("G", "K", 2);
  ASSERT_TRUE(load("[G]\nK=b\n"));
  EXPECT_EQ(values("K"), "|a|");
  ASSERT_TRUE(load("[G]\nK=\n"));
  EXPECT_EQ(values("K"), "missing");
}

TEST_F(ConfigLoader, AnEmptyAssignmentMakesNothingExist) {
  ASSERT_TRUE(load("[G]\nK=\nL=;\nM=${EMPTY}\n"));
  EXPECT_FALSE(parser_.hasGroup("G"));
}

TEST_F(ConfigLoader, DropsAPartWhoseTemplateFails) {
  ASSERT_TRUE(load("[G]\nK=a;x${NONE};b\n"));
  EXPECT_EQ(values("K"), "|a|b|");
  EXPECT_EQ(log_.text(), "ERROR: No such template 'NONE'\n");
}

TEST_F(ConfigLoader, KeepsTheEarlierValueWhereATemplateFails) {
  parser_.addKnownKey("G", "Single", SingleValue);
  parser_.addKnownKey("G", "List", ValueList);
  ASSERT_TRUE(load("[G]\nSingle=a\nSingle=$x\nList=a\nList=$x\nList=$x;b\n"));
  EXPECT_EQ(values("Single"), "|a|");
  EXPECT_EQ(values("List"), "|a|b|");
}

TEST_F(ConfigLoader, SplitsBeforeItExpands) {
  parser_.addTemplate("TWO", "a;b");
  ASSERT_TRUE(load("[G]\nK=${TWO}\n"));
  EXPECT_EQ(values("K"), "|a;b|");
  ASSERT_TRUE(load("[G]\nL=${system:true;false}\n"));
  EXPECT_EQ(values("L"), "|false}|");
}

TEST_F(ConfigLoader, TakesALongValue) {
  const std::string value(10'000'000, 'x');
  ASSERT_TRUE(load("[G]\nK=" + value + ";a\n"));
  EXPECT_EQ(values("K"), "|" + value + "|a|");
}

// Directories

TEST_F(ConfigLoader, NumbersItsResults) {
  EXPECT_EQ(static_cast<int>(LoadResult::Loaded), 0);
  EXPECT_EQ(static_cast<int>(LoadResult::NothingToLoad), 1);
  EXPECT_EQ(static_cast<int>(LoadResult::InvalidConfiguration), 2);
}

TEST_F(ConfigLoader, LoadsTheFilesOfADirectoryInByteOrder) {
  for (const char* const name : {"a", "Z", "2-y", "10-x", "10", "B b"}) {
    write("d/" + std::string(name) + ".conf", "[G]\nK=" + std::string(name) + "\n");
  }
  EXPECT_EQ(loadAll({"d"}), LoadResult::Loaded);
  EXPECT_EQ(values("K"), "|10-x|10|2-y|B b|Z|a|");
  EXPECT_TRUE(parser_.loadDirectory(path("d")));
  EXPECT_EQ(values("K"), "|10-x|10|2-y|B b|Z|a|10-x|10|2-y|B b|Z|a|");
  EXPECT_EQ(log_.text(), "");
}

TEST_F(ConfigLoader, LoadsDirectoriesInTheOrderGivenWithOrWithoutASlash) {
  write("a/1.conf", "[G]\nK=a\n");
  write("b/0.conf", "[G]\nK=b\n");
  EXPECT_EQ(loadAll({"b/", "a", "b"}), LoadResult::Loaded);
  EXPECT_EQ(values("K"), "|b|a|b|");
  EXPECT_TRUE(parser_.loadDirectory(path("a/")));
  EXPECT_EQ(values("K"), "|b|a|b|a|");
}

TEST_F(ConfigLoader, PassesOverFilesOfOtherNames) {
  for (const char* const name : {"a.conf~", ".hidden.conf", "a.CONF", "conf", "sub/a.conf"}) {
    write("d/" + std::string(name), "[G]\nK=x\n");
  }
  EXPECT_EQ(loadAll({"d"}), LoadResult::NothingToLoad);
  write("d/a.b.conf", "[G]\nK=y\n");
  EXPECT_EQ(loadAll({"d"}), LoadResult::Loaded);
  EXPECT_EQ(values("K"), "|y|");
}

TEST_F(ConfigLoader, LetsLaterFilesAndDirectoriesOverrideEarlierOnes) {
  write("a/10.conf", "[G]\nK=first\nL=1\nCleared=x\n");
  write("a/20.conf", "[G]\nK=second\nL=2\n");
  write("b/00.conf", "[G]\nK=third\nCleared=\n");
  EXPECT_EQ(loadAll({"a", "b"}), LoadResult::Loaded);
  std::string last;
  parser_.getValue("G", "K", last);
  EXPECT_EQ(last, "third");
  EXPECT_EQ(values("L"), "|1|2|");
  EXPECT_EQ(values("Cleared"), "missing");
}

TEST_F(ConfigLoader, CountsAFileWithoutEntries) {
  write("d/empty.conf", "");
  EXPECT_EQ(loadAll({"d"}), LoadResult::Loaded);
  EXPECT_TRUE(parser_.loadDirectory(path("d")));
}

TEST_F(ConfigLoader, HasNothingToLoadWhereNoDirectoryHoldsAFile) {
  write("b/readme", "");
  EXPECT_EQ(parser_.loadDirectories({}), LoadResult::NothingToLoad);
  EXPECT_EQ(loadAll({"missing"}), LoadResult::NothingToLoad);
  EXPECT_EQ(loadAll({"missing", "b"}), LoadResult::NothingToLoad);
  EXPECT_EQ(log_.text(), "");
}

TEST_F(ConfigLoader, PassesOverDirectoriesWithoutFilesSilently) {
  write("b/1.conf", "[G]\nK=b\n");
  EXPECT_EQ(loadAll({"missing", "b", "missing"}), LoadResult::Loaded);
  EXPECT_EQ(values("K"), "|b|");
  EXPECT_EQ(log_.text(), "");
}

// Failures

TEST_F(ConfigLoader, KeepsWhatStoodBeforeTheFirstBadLine) {
  directory_.write("x.conf", "[G]\nK=1\nbad\nL=2\nworse\n");
  EXPECT_FALSE(parser_.loadFile(path("x.conf")));
  EXPECT_EQ(values("K"), "|1|");
  EXPECT_EQ(values("L"), "missing");
  EXPECT_EQ(log_.text(), "ERROR: Could not parse line as key in " + path("x.conf") +
                             " (3): 'bad'\nERROR: Failed to load config from '" + path("x.conf") +
                             "'\n");
}

TEST_F(ConfigLoader, FailsOnABadLineBehindTheLastEntry) {
  EXPECT_FALSE(load("[G]\nK=1\n bad\n"));
  EXPECT_EQ(values("K"), "|1|");
}

TEST_F(ConfigLoader, FailsOnAFileThatCannotBeOpenedOrRead) {
  for (const std::string& file : {path("missing.conf"), path("")}) {
    const LogCapture log;
    EXPECT_FALSE(parser_.loadFile(file));
    EXPECT_EQ(log.text(), "ERROR: Failed to load config from '" + file + "'\n");
  }
}

TEST_F(ConfigLoader, LoadsADirectoryToItsEndThoughAFileFails) {
  write("d/1.conf", "[G]\nK=1\n");
  write("d/2.conf", "bad\n");
  write("d/3.conf", "[G]\nK=3\n");
  EXPECT_FALSE(parser_.loadDirectory(path("d")));
  EXPECT_EQ(values("K"), "|1|3|");
  EXPECT_EQ(log_.text(), "ERROR: Could not parse line as key in " + path("d/2.conf") +
                             " (1): 'bad'\nERROR: Failed to load config from '" + path("d/2.conf") +
                             "'\n");
}

TEST_F(ConfigLoader, FailsOnADirectoryWithoutFiles) {
  for (const char* const name : {"missing", "missing/"}) {
    const LogCapture log;
    EXPECT_FALSE(parser_.loadDirectory(path(name)));
    EXPECT_EQ(log.text(), "ERROR: No configuration to read in " + path("missing/") + "\n");
  }
}

TEST_F(ConfigLoader, StopsAtTheFirstFileThatFails) {
  write("a/1.conf", "[G]\nK=1\n");
  write("b/1.conf", "[G]\nK=2\n=bad\nK=3\n");
  write("b/2.conf", "[G]\nK=4\nalso bad\n");
  write("c/1.conf", "[G]\nK=5\n");
  EXPECT_EQ(loadAll({"a", "b", "c"}), LoadResult::InvalidConfiguration);
  EXPECT_EQ(values("K"), "|1|2|");
  EXPECT_EQ(log_.text(), "ERROR: Unexpected line in " + path("b/1.conf") +
                             " (3): '=bad'\nERROR: Failed to load config from '" +
                             path("b/1.conf") + "'\nERROR: Invalid configuration in " +
                             path("b/1.conf") + "\n");
}

TEST_F(ConfigLoader, FailsOnADirectoryNamedLikeAFile) {
  std::filesystem::create_directories(path("d/x.conf"));
  EXPECT_EQ(loadAll({"d"}), LoadResult::InvalidConfiguration);
  EXPECT_EQ(log_.text(), "ERROR: Failed to load config from '" + path("d/x.conf/") +
                             "'\nERROR: Invalid configuration in " + path("d/x.conf/") + "\n");
}

TEST_F(ConfigLoader, FailsOnALinkToNowhere) {
  write("d/2.conf", "[G]\nK=1\n");
  std::filesystem::create_symlink("nowhere", path("d/1.conf"));
  EXPECT_EQ(loadAll({"d"}), LoadResult::InvalidConfiguration);
  EXPECT_EQ(log_.text(), "ERROR: Failed to load config from '" + path("d/1.conf") +
                             "'\nERROR: Invalid configuration in " + path("d/1.conf") + "\n");
  EXPECT_EQ(values("K"), "missing");
}

}  // namespace
}  // namespace Cradle::Parser
