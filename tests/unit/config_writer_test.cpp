// SPDX-License-Identifier: MIT
#include "config_writer.h"

#include <filesystem>
#include <limits>
#include <stdexcept>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "support/log_capture.h"
#include "support/temporary_directory.h"

namespace Cradle::Parser {
namespace {

using Separator = ConfigWriter::Separator;
using Testing::LogCapture;
using Testing::TemporaryDirectory;

// A process mask for the time of a test.
class FileMask {
 public:
  explicit FileMask(mode_t mask) : previous_(umask(mask)) {}
  ~FileMask() { umask(previous_); }
  FileMask(const FileMask&) = delete;
  FileMask& operator=(const FileMask&) = delete;

 private:
  mode_t previous_;
};

class ConfigWriterTest : public ::testing::Test {
 protected:
  std::string path() const { return directory_.path("out"); }
  std::string written() const { return directory_.read("out"); }

  mode_t mode() const {
    struct stat status {};
    EXPECT_EQ(stat(path().c_str(), &status), 0);
    return status.st_mode & 07777;
  }

  TemporaryDirectory directory_;
};

TEST_F(ConfigWriterTest, WritesEachKindOfLine) {
  ConfigWriter writer(path(), Separator::Plain);
  writer.writeComment("a comment");
  writer.writeEmptyLine();
  writer.writeGroup("Config");
  writer.writeValue("Text", std::string("a=b; c"));
  writer.writeValue("Literal", "text");
  writer.writeValue("Yes", true);
  writer.writeValue("No", false);
  writer.writeValue("Number", 42);
  EXPECT_EQ(written(),
            "# a comment\n"
            "\n"
            "[Config]\n"
            "Text=a=b; c\n"
            "Literal=text\n"
            "Yes=true\n"
            "No=false\n"
            "Number=42\n");
}

TEST_F(ConfigWriterTest, WritesEmptyTextsLikeAnyOther) {
  ConfigWriter writer(path(), Separator::Plain);
  writer.writeComment("");
  writer.writeGroup("");
  writer.writeValue("", "");
  EXPECT_EQ(written(), "# \n[]\n=\n");
}

TEST_F(ConfigWriterTest, JoinsKeyAndValueWithoutBlanksWhenPlain) {
  ConfigWriter(path(), Separator::Plain).writeValue("UserId", 1000);
  EXPECT_EQ(written(), "UserId=1000\n");
}

TEST_F(ConfigWriterTest, JoinsKeyAndValueWithBlanksWhenSpaced) {
  ConfigWriter writer(path(), Separator::Spaced);
  writer.writeValue("UserId", 1000);
  writer.writeValue("Text", std::string("a"));
  writer.writeValue("Literal", "b");
  writer.writeValue("Yes", true);
  EXPECT_EQ(written(), "UserId = 1000\nText = a\nLiteral = b\nYes = true\n");
}

TEST_F(ConfigWriterTest, WritesIntegersOverTheirWholeRange) {
  ConfigWriter writer(path(), Separator::Plain);
  writer.writeValue("Least", std::numeric_limits<std::int32_t>::min());
  writer.writeValue("Greatest", std::numeric_limits<std::int32_t>::max());
  EXPECT_EQ(written(), "Least=-2147483648\nGreatest=2147483647\n");
}

TEST_F(ConfigWriterTest, WritesContentAsItIsAndEndsItsLastLine) {
  struct Content {
    std::string text;
    std::string written;
  };
  for (const Content& row : {
           Content{"", "\n"},
           Content{"a", "a\n"},
           Content{"a\n", "a\n"},
           Content{"\n", "\n"},
           Content{"a\n\n", "a\n\n"},
           Content{" a\r\n\tb = $c", " a\r\n\tb = $c\n"},
           Content{std::string("\0\xff\0", 3), std::string("\0\xff\0\n", 4)},
       }) {
    ConfigWriter(path(), Separator::Spaced).writeContent(row.text);
    EXPECT_EQ(written(), row.written) << row.text;
  }
}

TEST_F(ConfigWriterTest, HasEveryLineInTheFileAtOnce) {
  ConfigWriter writer(path(), Separator::Plain);
  EXPECT_EQ(written(), "");
  writer.writeComment("c");
  EXPECT_EQ(written(), "# c\n");
  writer.writeGroup("g");
  EXPECT_EQ(written(), "# c\n[g]\n");
  writer.writeValue("k", true);
  EXPECT_EQ(written(), "# c\n[g]\nk=true\n");
  writer.writeEmptyLine();
  EXPECT_EQ(written(), "# c\n[g]\nk=true\n\n");
  writer.writeContent("x");
  EXPECT_EQ(written(), "# c\n[g]\nk=true\n\nx\n");
}

// The file

TEST_F(ConfigWriterTest, CreatesTheFileForItsOwnerOnlyWhateverTheMask) {
  for (const mode_t mask : {0U, 022U, 077U, 0177U}) {
    const FileMask callers(mask);
    std::filesystem::remove(path());
    const ConfigWriter writer(path(), Separator::Plain);
    EXPECT_EQ(mode(), 0600U) << mask;
  }
}

TEST_F(ConfigWriterTest, LeavesTheMaskAsItWas) {
  const FileMask callers(027);
  const ConfigWriter writer(path(), Separator::Plain);
  EXPECT_EQ(umask(027), 027U);
}

TEST_F(ConfigWriterTest, EmptiesAnExistingFileAndKeepsItsMode) {
  directory_.write("out", "earlier\ncontent\n");
  std::filesystem::permissions(path(), std::filesystem::perms(0640));
  ConfigWriter(path(), Separator::Plain).writeEmptyLine();
  EXPECT_EQ(written(), "\n");
  EXPECT_EQ(mode(), 0640U);
}

TEST_F(ConfigWriterTest, CreatesAnEmptyFileWhenNothingIsWritten) {
  EXPECT_TRUE(ConfigWriter(path(), Separator::Plain).isOpen());
  EXPECT_EQ(written(), "");
}

TEST_F(ConfigWriterTest, WritesThroughASymbolicLink) {
  std::filesystem::create_symlink("target", path());
  ConfigWriter(path(), Separator::Plain).writeEmptyLine();
  EXPECT_EQ(directory_.read("target"), "\n");
  EXPECT_TRUE(std::filesystem::is_symlink(path()));
}

// Failures

TEST_F(ConfigWriterTest, DiscardsEverythingInSilenceWhereTheFileCannotBeOpened) {
  const LogCapture log(LogCapture::Level::LogDebug);
  for (const std::string& unwritable :
       {directory_.path(), directory_.path("no/out"), std::string()}) {
    ConfigWriter writer(unwritable, Separator::Plain);
    EXPECT_FALSE(writer.isOpen()) << unwritable;
    writer.writeComment("c");
    writer.writeGroup("g");
    writer.writeValue("k", 1);
    writer.writeEmptyLine();
    writer.writeContent("x");
  }
  EXPECT_TRUE(std::filesystem::is_empty(directory_.path()));
  EXPECT_EQ(log.text(), "");
}

TEST_F(ConfigWriterTest, LeavesTheMaskAsItWasWhereTheFileCannotBeOpened) {
  const FileMask callers(027);
  const ConfigWriter writer(directory_.path("no/out"), Separator::Plain);
  EXPECT_EQ(umask(027), 027U);
}

TEST_F(ConfigWriterTest, DiscardsWhatAFullDeviceDoesNotTake) {
  const LogCapture log(LogCapture::Level::LogDebug);
  ConfigWriter writer("/dev/full", Separator::Plain);
  EXPECT_TRUE(writer.isOpen());
  writer.writeComment("c");
  writer.writeContent("x");
  EXPECT_TRUE(writer.isOpen());
  EXPECT_EQ(log.text(), "");
}

TEST_F(ConfigWriterTest, TakesANullPointerAsAMistakeOfTheProgram) {
  ConfigWriter writer(path(), Separator::Plain);
  const char* const null = nullptr;
  EXPECT_THROW(writer.writeValue("Key", null), std::logic_error);
  EXPECT_EQ(written(), "");
}

}  // namespace
}  // namespace Cradle::Parser
