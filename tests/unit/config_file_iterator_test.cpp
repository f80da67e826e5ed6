// SPDX-License-Identifier: MIT
#include "config_file_iterator.h"

#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "support/log_capture.h"
#include "support/temporary_directory.h"

namespace Cradle::Parser {
namespace {

using namespace std::string_literals;
using Testing::LogCapture;
using Testing::TemporaryDirectory;

std::string entryOf(const ConfigFileIterator& iterator) {
  return "[" + std::string(iterator.group()) + "] " + std::string(iterator.key()) + "=" +
         std::string(iterator.value()) + "\n";
}

// A pass over a file: its entries up to the first bad line, then the messages, in which the path is
// PATH, then "failed" if the file did.
std::string readFile(const std::string& path) {
  const LogCapture log;
  ConfigFileInfo info(path);
  std::string reading;
  for (ConfigFileIterator entry(info, false);
       entry != ConfigFileIterator(info, true) && !info.failed; ++entry) {
    reading += entryOf(entry);
  }
  reading += log.text();
  for (std::size_t at = 0; (at = reading.find(path)) != std::string::npos;) {
    reading.replace(at, path.size(), "PATH");
  }
  return reading + (info.failed ? "failed" : "");
}

std::string read(std::string_view text) {
  const TemporaryDirectory directory;
  return readFile(directory.write("test.conf", text));
}

std::string failure(const std::string& message) {
  return "ERROR: " + message + "\nfailed";
}

TEST(ConfigFileIterator, YieldsTheEntriesWithTheirGroups) {
  EXPECT_EQ(read("[Audio]\nA=1\nB=2\n[Video]\nA=3\n"), "[Audio] A=1\n[Audio] B=2\n[Video] A=3\n");
}

TEST(ConfigFileIterator, PutsKeysBeforeAnyGroupIntoTheGroupWithTheEmptyName) {
  EXPECT_EQ(read("A=1\n[G]\nB=2\n[]\nC=3\n"), "[] A=1\n[G] B=2\n[] C=3\n");
}

TEST(ConfigFileIterator, YieldsRepeatedGroupsAndKeysAsFurtherEntries) {
  EXPECT_EQ(read("[A]\nK=1\n[B]\nK=2\n[A]\nK=3\nK=3\n"), "[A] K=1\n[B] K=2\n[A] K=3\n[A] K=3\n");
}

struct GoodLine {
  std::string line;
  std::string entry;
};

const GoodLine kGoodLines[] = {
    {"key=value", "[] key=value\n"},
    {"key=a=b", "[] key=a=b\n"},
    {"key==", "[] key==\n"},
    {"key=", "[] key=\n"},
    {"Key = value", "[] Key = value\n"},
    {"key=value # note", "[] key=value # note\n"},
    {"key=value ; note", "[] key=value ; note\n"},
    {"key=a;b;", "[] key=a;b;\n"},
    {"key= value\t ", "[] key= value\t \n"},
    {"key=value\r", "[] key=value\r\n"},
    {"key=\"value\"", "[] key=\"value\"\n"},
    {"key=a\\", "[] key=a\\\n"},
    {"key=[group]", "[] key=[group]\n"},
    {"key=\xc3\xa4\xff\0\x01"s, "[] key=\xc3\xa4\xff\0\x01\n"s},
    {"-=1", "[] -=1\n"},
    {".a b-_.9=1", "[] .a b-_.9=1\n"},
};

TEST(ConfigFileIterator, TakesKeysAndValuesAsTheyStand) {
  for (const GoodLine& row : kGoodLines) {
    EXPECT_EQ(read(row.line + "\n"), row.entry) << row.line;
  }
}

TEST(ConfigFileIterator, TakesGroupNamesAsTheyStand) {
  for (const std::string group : {"Audio", "", "My Group", " ", "-._9", " a "}) {
    EXPECT_EQ(read("[X]\n[" + group + "]\nK=1\n"), "[" + group + "] K=1\n");
  }
}

TEST(ConfigFileIterator, PassesOverCommentsAndBlankLines) {
  EXPECT_EQ(read("# a\n\n;b\n#K=1\n;[G]\nK=2\n#\n;\n\n"), "[] K=2\n");
}

TEST(ConfigFileIterator, CountsALastLineWithoutLineFeedLikeAnyOther) {
  EXPECT_EQ(read("A=1\nB=2"), "[] A=1\n[] B=2\n");
  EXPECT_EQ(read("A=1\nB="), "[] A=1\n[] B=\n");
  EXPECT_EQ(read("A=1\n# end"), "[] A=1\n");
  EXPECT_EQ(read("A=1\n[G]"), "[] A=1\n");
  EXPECT_EQ(read("A=1\nB"), "[] A=1\n" + failure("Could not parse line as key in PATH (2): 'B'"));
}

TEST(ConfigFileIterator, YieldsNothingForAFileWithoutEntries) {
  for (const char* const text : {"", "\n", "\n\n", "# a", "[G]\n", "[G]\n[H]"}) {
    EXPECT_EQ(read(text), "") << text;
  }
}

TEST(ConfigFileIterator, ReadsALongLine) {
  const std::string value(1 << 20, 'x');
  EXPECT_EQ(read("A=" + value + "\nB=1\n"), "[] A=" + value + "\n[] B=1\n");
}

constexpr std::string_view kLettersAndDigits =
    "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";

// Every byte that can stand in a line, and whether it is one of the characters given.
template <typename Check>
void forEachByte(const std::string& characters, const Check& check) {
  for (int byte = 0; byte < 256; ++byte) {
    const char character = static_cast<char>(byte);
    if (character != '\n') {
      SCOPED_TRACE("byte " + std::to_string(byte));
      check(std::string(1, character), characters.find(character) != std::string::npos);
    }
  }
}

TEST(ConfigFileIterator, TellsTheKindOfALineByItsFirstCharacter) {
  forEachByte("-._" + std::string(kLettersAndDigits), [](const std::string& first, bool isKey) {
    const std::string line = first + "=1";
    if (isKey) {
      EXPECT_EQ(read(line), "[] " + line + "\n");
    } else if (first == "[") {
      EXPECT_EQ(read(line), failure("Could not parse line as group in PATH (1): '" + line + "'"));
    } else if (first == "#" || first == ";") {
      EXPECT_EQ(read(line), "");
    } else {
      EXPECT_EQ(read(line), failure("Unexpected line in PATH (1): '" + line + "'"));
    }
  });
}

TEST(ConfigFileIterator, AllowsLettersDigitsAndFourOtherCharactersInAKey) {
  forEachByte("-._= " + std::string(kLettersAndDigits), [](const std::string& byte, bool allowed) {
    const std::string line = "a" + byte + "b=1";
    EXPECT_EQ(read(line),
              allowed ? "[] " + line + "\n"
                      : failure("Key contains invalid characters in PATH (1): '" + line + "'"));
  });
}

TEST(ConfigFileIterator, AllowsLettersDigitsAndFourOtherCharactersInAGroupName) {
  forEachByte("-._ " + std::string(kLettersAndDigits), [](const std::string& byte, bool allowed) {
    const std::string line = "[a" + byte + "b]";
    EXPECT_EQ(read(line + "\nK=1\n"),
              allowed
                  ? line + " K=1\n"
                  : failure("Group name contains invalid characters in PATH (1): '" + line + "'"));
  });
}

TEST(ConfigFileIterator, EqualsAnotherOnTheSameLineOfTheSameFile) {
  const TemporaryDirectory directory;
  const std::string path = directory.write("test.conf", "A=1\nA=1\nA=1\n");
  ConfigFileInfo info(path);
  ConfigFileIterator entry(info, false);
  ConfigFileIterator other(info, false);
  EXPECT_EQ(entry, other);
  ++entry;
  EXPECT_NE(entry, other);
  ++other;
  EXPECT_EQ(entry, other);
  ++entry;
  EXPECT_NE(entry, other);
}

TEST(ConfigFileIterator, EqualsTheEndBehindTheLastEntry) {
  const TemporaryDirectory directory;
  ConfigFileInfo info(directory.write("test.conf", "A=1\n# comment\n"));
  ConfigFileIterator entry(info, false);
  EXPECT_NE(entry, ConfigFileIterator(info, true));
  ++entry;
  EXPECT_EQ(entry, ConfigFileIterator(info, true));
  ++entry;
  EXPECT_EQ(entry, ConfigFileIterator(info, true));
  EXPECT_FALSE(info.failed);
}

TEST(ConfigFileIterator, HasAnEmptyKeyAndValueWhereThereIsNoEntry) {
  const LogCapture log;
  const TemporaryDirectory directory;
  for (const char* const text : {"", "# comment", "bad", "/bad=1", "A=1", "A=1\nbad line\n"}) {
    ConfigFileInfo info(directory.write("test.conf", text));
    ConfigFileIterator entry(info, false);
    ++entry;
    EXPECT_EQ(entryOf(entry), "[] =\n") << text;
  }
}

TEST(ConfigFileIterator, DiffersFromOneOverAnotherFile) {
  const TemporaryDirectory directory;
  const std::string path = directory.write("test.conf", "A=1\n");
  ConfigFileInfo info(path);
  ConfigFileInfo other(path);
  EXPECT_NE(ConfigFileIterator(info, false), ConfigFileIterator(other, false));
  EXPECT_NE(ConfigFileIterator(info, true), ConfigFileIterator(other, true));
}

// Failures

struct BadLine {
  std::string line;
  std::string reason;
};

const BadLine kBadLines[] = {
    {"[Audio", "Could not parse line as group in "},
    {"[", "Could not parse line as group in "},
    {"[Audio] ", "Could not parse line as group in "},
    {"[Audio]\r", "Could not parse line as group in "},
    {"[Audio] # note", "Could not parse line as group in "},
    {"[Audio/x", "Could not parse line as group in "},
    {"[Audio/x]", "Group name contains invalid characters in "},
    {"[[Audio]]", "Group name contains invalid characters in "},
    {"[a\tb]", "Group name contains invalid characters in "},
    {"Audio", "Could not parse line as key in "},
    {"Audio]", "Could not parse line as key in "},
    {"a/b", "Could not parse line as key in "},
    {"Audio ", "Could not parse line as key in "},
    {"a/b=1", "Key contains invalid characters in "},
    {"a\t=1", "Key contains invalid characters in "},
    {"a[0]=1", "Key contains invalid characters in "},
    {"=1", "Unexpected line in "},
    {" key=1", "Unexpected line in "},
    {"\tkey=1", "Unexpected line in "},
    {" ", "Unexpected line in "},
    {"\t", "Unexpected line in "},
    {"\r", "Unexpected line in "},
    {" # comment", "Unexpected line in "},
    {" [Audio]", "Unexpected line in "},
    {"]", "Unexpected line in "},
    {"\"key\"=1", "Unexpected line in "},
    {"\xef\xbb\xbfkey=1", "Unexpected line in "},
    {"\0"s, "Unexpected line in "},
};

TEST(ConfigFileIterator, ReportsABadLineWithItsReasonItsNumberAndItself) {
  for (const BadLine& row : kBadLines) {
    EXPECT_EQ(read("#\n\nA=1\n" + row.line + "\n"),
              "[] A=1\n" + failure(row.reason + "PATH (4): '" + row.line + "'"))
        << row.line;
  }
}

TEST(ConfigFileIterator, CountsEveryLine) {
  EXPECT_EQ(read("# 1\n\n;3\n[G]\nK=5\n\nAudio\n"),
            "[G] K=5\n" + failure("Could not parse line as key in PATH (7): 'Audio'"));
  EXPECT_EQ(read(std::string(70'000, '\n') + "Audio\n"),
            failure("Could not parse line as key in PATH (70001): 'Audio'"));
}

TEST(ConfigFileIterator, ReportsEveryBadLineUpToTheNextEntry) {
  EXPECT_EQ(read("A=1\nbad\n[bad\n# comment\n=bad\nB=2\nnot reported\n"),
            "[] A=1\n"
            "ERROR: Could not parse line as key in PATH (2): 'bad'\n"
            "ERROR: Could not parse line as group in PATH (3): '[bad'\n" +
                failure("Unexpected line in PATH (5): '=bad'"));
}

TEST(ConfigFileIterator, HoldsTheEntryBehindABadLine) {
  const LogCapture log;
  const TemporaryDirectory directory;
  ConfigFileInfo info(directory.write("test.conf", "#\nA=1\nbad\n[bad/group]\nB=2\n"));
  ConfigFileIterator entry(info, false);
  EXPECT_EQ(entryOf(entry), "[] A=1\n");
  EXPECT_FALSE(info.failed);
  ++entry;
  EXPECT_EQ(entryOf(entry), "[] B=2\n");
  EXPECT_TRUE(info.failed);
}

TEST(ConfigFileIterator, TellsTheLineOfEachEntry) {
  const TemporaryDirectory directory;
  ConfigFileInfo info(directory.write("test.conf", "#\nA=1\n\n[G]\nB=2\n"));
  ConfigFileIterator entry(info, false);
  EXPECT_EQ(entry.lineNumber(), 2U);
  ++entry;
  EXPECT_EQ(entry.lineNumber(), 5U);
}

TEST(ConfigFileIterator, PutsBadLinesIntoTheListThatItIsGiven) {
  const LogCapture log;
  const TemporaryDirectory directory;
  ConfigFileInfo info(directory.write("test.conf", "bad\nA=1\n[bad/group]\n"));
  std::vector<RejectedLine> lines;
  info.rejected = &lines;
  ConfigFileIterator entry(info, false);
  ++entry;
  ASSERT_EQ(lines.size(), 2U);
  EXPECT_EQ(lines[0].number, 1U);
  EXPECT_EQ(lines[0].reason, "Could not parse line as key in ");
  EXPECT_EQ(lines[0].text, "bad");
  EXPECT_EQ(lines[1].number, 3U);
  EXPECT_EQ(lines[1].reason, "Group name contains invalid characters in ");
  EXPECT_EQ(lines[1].text, "[bad/group]");
}

TEST(ConfigFileIterator, KeepsTheGroupBeforeABadGroupLine) {
  for (const char* const line : {"[bad/name]", "[bad"}) {
    const LogCapture log;
    const TemporaryDirectory directory;
    ConfigFileInfo info(directory.write("test.conf", "[Good]\n" + std::string(line) + "\nK=1\n"));
    EXPECT_EQ(entryOf(ConfigFileIterator(info, false)), "[Good] K=1\n") << line;
    EXPECT_TRUE(info.failed) << line;
  }
}

// The group of a key behind a bad line of the group "Good", where bad lines are listed.
std::string groupBehind(const std::string& line) {
  const LogCapture log;
  const TemporaryDirectory directory;
  ConfigFileInfo info(directory.write("test.conf", "[Good]\n" + line + "\nK=1\n"));
  std::vector<RejectedLine> lines;
  info.rejected = &lines;
  return std::string(ConfigFileIterator(info, false).group());
}

TEST(ConfigFileIterator, NamesTheGroupBehindABadGroupLineLikeThatLineWhereBadLinesAreListed) {
  for (const char* const line : {"[bad/name]", "[bad", "\xef\xbb\xbf[A]"}) {
    EXPECT_EQ(groupBehind(line), line);
  }
}

TEST(ConfigFileIterator, KeepsTheGroupBehindAnyOtherBadLineWhereBadLinesAreListed) {
  for (const char* const line : {"bad", "bad!=1", " [A]", "\xef\xbb\xbf"}) {
    EXPECT_EQ(groupBehind(line), "Good") << line;
  }
}

TEST(ConfigFileIterator, FailsSilentlyOnAFileThatCannotBeOpened) {
  const TemporaryDirectory directory;
  EXPECT_EQ(readFile(directory.path("missing.conf")), "failed");
}

TEST(ConfigFileIterator, FailsSilentlyOnAFileThatCannotBeRead) {
  const TemporaryDirectory directory;
  EXPECT_EQ(readFile(directory.path()), "failed");
  EXPECT_EQ(readFile(directory.path() + "/"), "failed");
}

}  // namespace
}  // namespace Cradle::Parser
