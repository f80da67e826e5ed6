#include "logging/log_target.h"

#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <locale>
#include <memory>
#include <sstream>
#include <streambuf>
#include <string>

#include <dlfcn.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "logging/logger_config.h"
#include "support/child_process.h"
#include "support/lower_case_path.h"
#include "support/stream_capture.h"
#include "support/temporary_directory.h"

namespace Cradle::Parser::Logging {
namespace {

using ::testing::HasSubstr;
using Testing::limitDescriptors;
using Testing::LowerCasePath;
using Testing::nextDescriptor;
using Testing::StreamCapture;
using ::testing::StrEq;
using Testing::TemporaryDirectory;

LogTarget targetOn(const std::shared_ptr<std::ostream>& stream) {
  return {Target::TargetFile, stream};
}

// Programs that pass a target on count on its size.
static_assert(sizeof(LoggerConfig::Target) == sizeof(std::int32_t));

TEST(LogTarget, IsNumberedFromTheJournalToAFile) {
  EXPECT_EQ(static_cast<std::int32_t>(Target::TargetSystemd), 0);
  EXPECT_EQ(static_cast<std::int32_t>(Target::TargetStdout), 1);
  EXPECT_EQ(static_cast<std::int32_t>(Target::TargetStderr), 2);
  EXPECT_EQ(static_cast<std::int32_t>(Target::TargetFile), 3);
}

struct NamedTarget {
  const char* name;
  Target target;
  const std::ostream* stream;
};

const NamedTarget kNamedTargets[] = {
    {"systemd", Target::TargetSystemd, nullptr},  {"SYSTEMD", Target::TargetSystemd, nullptr},
    {"stdout", Target::TargetStdout, &std::cout}, {"StdOut", Target::TargetStdout, &std::cout},
    {"stderr", Target::TargetStderr, &std::cerr}, {"Stderr", Target::TargetStderr, &std::cerr},
};

TEST(LogTarget, IsKnownByItsNameInAnyCase) {
  for (const NamedTarget& row : kNamedTargets) {
    const LogTarget target = convertTargetFromString(row.name);
    EXPECT_EQ(target.target, row.target) << row.name;
    EXPECT_EQ(target.stream.get(), row.stream) << row.name;
  }
}

TEST(LogTarget, IsMadeWithItsStandardStream) {
  for (const NamedTarget& row : kNamedTargets) {
    EXPECT_EQ(makeTarget(row.target).target, row.target);
    EXPECT_EQ(makeTarget(row.target).stream.get(), row.stream);
  }
}

class LogFile : public ::testing::Test {
 protected:
  TemporaryDirectory directory_;
  LowerCasePath path_{directory_.path()};
};

TEST_F(LogFile, IsCreatedAndWrittenAtOnce) {
  const LogTarget target = convertTargetFromString(path_.of("my.log"));
  EXPECT_EQ(target.target, Target::TargetFile);
  ASSERT_TRUE(targetIsValid(target));
  emitLine(target, Level::LogInfo, "first");
  EXPECT_EQ(directory_.read("my.log"), "INFO: first\n");
  emitLine(target, Level::LogError, "second");
  EXPECT_EQ(directory_.read("my.log"), "INFO: first\nERROR: second\n");
}

TEST_F(LogFile, IsOpenedInLowerCase) {
  directory_.write("My.log", "untouched");
  emitLine(convertTargetFromString(path_.of("My.LOG")), Level::LogInfo, "text");
  EXPECT_EQ(directory_.read("my.log"), "INFO: text\n");
  EXPECT_EQ(directory_.read("My.log"), "untouched");
  EXPECT_FALSE(std::filesystem::exists(directory_.path("My.LOG")));
}

TEST_F(LogFile, LosesWhatItHeldBefore) {
  directory_.write("my.log", "old\n");
  convertTargetFromString(path_.of("my.log"));
  EXPECT_EQ(directory_.read("my.log"), "");
}

TEST(LogTarget, IsValidWithAStreamInAGoodStateAndAlwaysForTheJournal) {
  const StreamCapture out(std::cout);
  const StreamCapture err(std::cerr);
  EXPECT_TRUE(targetIsValid(makeTarget(Target::TargetSystemd)));
  EXPECT_TRUE(targetIsValid(makeTarget(Target::TargetStdout)));
  EXPECT_TRUE(targetIsValid(makeTarget(Target::TargetStderr)));
  EXPECT_TRUE(targetIsValid(targetOn(std::make_shared<std::ostringstream>())));
}

TEST(LogTarget, DropsAllWhereItHasNeitherTheJournalNorAStream) {
  EXPECT_TRUE(targetDropsAll(LogTarget{}));
  EXPECT_TRUE(targetDropsAll(makeTarget(Target::TargetFile)));
  EXPECT_FALSE(targetDropsAll(makeTarget(Target::TargetSystemd)));
  EXPECT_FALSE(targetDropsAll(makeTarget(Target::TargetStderr)));
  EXPECT_FALSE(targetDropsAll(targetOn(std::make_shared<std::ostringstream>())));
}

struct Line {
  Level level;
  const char* line;
};

constexpr Line kLines[] = {
    {Level::LogCritical, "CRITICAL: some text\n"}, {Level::LogError, "ERROR: some text\n"},
    {Level::LogWarning, "WARNING: some text\n"},   {Level::LogInfo, "INFO: some text\n"},
    {Level::LogDebug, "DEBUG: some text\n"},
};

TEST(EmitLine, PutsTheLevelBeforeTheText) {
  for (const Line& row : kLines) {
    const auto stream = std::make_shared<std::ostringstream>();
    emitLine(targetOn(stream), row.level, "some text");
    EXPECT_EQ(stream->str(), row.line);
  }
}

TEST(EmitLine, KeepsTheTextAsItIs) {
  const std::string text("%s\0\xff\n", 5);
  const auto stream = std::make_shared<std::ostringstream>();
  emitLine(targetOn(stream), Level::LogInfo, text);
  EXPECT_EQ(stream->str(), "INFO: " + text + "\n");
}

// Notes each write as <text> and each flush as a bar.
class NotingBuffer : public std::streambuf {
 public:
  std::string notes;

 protected:
  std::streamsize xsputn(const char* text, std::streamsize size) override {
    notes += "<" + std::string(text, static_cast<std::size_t>(size)) + ">";
    return size;
  }
  int_type overflow(int_type character) override {
    notes += "<" + std::string(1, traits_type::to_char_type(character)) + ">";
    return character;
  }
  int sync() override {
    notes += "|";
    return 0;
  }
};

TEST(EmitLine, WritesALineInOnePieceAndFlushesIt) {
  NotingBuffer buffer;
  const auto stream = std::make_shared<std::ostream>(&buffer);
  emitLine(targetOn(stream), Level::LogInfo, "a");
  emitLine(targetOn(stream), Level::LogError, "b");
  EXPECT_EQ(buffer.notes, "<INFO: a\n>|<ERROR: b\n>|");
}

// A locale in which a line ends otherwise.
struct BarAtLineEnd : std::ctype<char> {
  char do_widen(char character) const override { return character == '\n' ? '|' : character; }
  const char* do_widen(const char* begin, const char* end, char* to) const override {
    for (; begin != end; ++begin) {
      *to++ = do_widen(*begin);
    }
    return end;
  }
};

TEST(EmitLine, EndsTheLineAsTheLocaleOfTheStreamSays) {
  const auto stream = std::make_shared<std::ostringstream>();
  stream->imbue(std::locale(std::locale::classic(), new BarAtLineEnd));
  emitLine(targetOn(stream), Level::LogInfo, "a");
  EXPECT_EQ(stream->str(), "INFO: a|");
}

// The journal. A library that is loaded already stands in for any of the same name that is asked
// for later, so each of these tests needs a process in which none has been.

class JournalDeathTest : public ::testing::Test {
 protected:
  JournalDeathTest() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }

  [[noreturn]] static void show(Level level, std::string_view text) {
    if (dlopen(JOURNAL_STUB, RTLD_NOW) != nullptr) {
      emitLine(makeTarget(Target::TargetSystemd), level, text);
    }
    std::exit(0);
  }
};

TEST_F(JournalDeathTest, GetsTheTextAloneWithThePriorityOfItsLevel) {
  const ::testing::ExitedWithCode success(0);
  EXPECT_EXIT(show(Level::LogCritical, "a"), success, HasSubstr("journal <2> <%s> <a>\n"));
  EXPECT_EXIT(show(Level::LogError, "b"), success, HasSubstr("journal <3> <%s> <b>\n"));
  EXPECT_EXIT(show(Level::LogWarning, "c"), success, HasSubstr("journal <4> <%s> <c>\n"));
  EXPECT_EXIT(show(Level::LogInfo, "d"), success, HasSubstr("journal <6> <%s> <d>\n"));
  EXPECT_EXIT(show(Level::LogDebug, "e"), success, HasSubstr("journal <7> <%s> <e>\n"));
}

TEST_F(JournalDeathTest, GetsATextThatLooksLikeAFormatAsItIs) {
  EXPECT_EXIT(show(Level::LogError, "100%s %n"), ::testing::ExitedWithCode(0),
              HasSubstr("journal <3> <%s> <100%s %n>\n"));
}

// Failures

[[noreturn]] void emitWithoutLibrary() {
  limitDescriptors(nextDescriptor());
  emitLine(makeTarget(Target::TargetSystemd), Level::LogCritical, "lost");
  std::cerr << "nothing to open, nothing printed\n";
  std::_Exit(0);
}

TEST_F(JournalDeathTest, IsPassedOverSilentlyWithoutItsLibrary) {
  EXPECT_EXIT(emitWithoutLibrary(), ::testing::ExitedWithCode(0),
              StrEq("nothing to open, nothing printed\n"));
}

TEST(LogTarget, IsAFileWithoutAStreamForAnyOtherText) {
  const TemporaryDirectory directory;
  const LowerCasePath path(directory.path());
  for (const std::string& text :
       {std::string(), std::string("syslog"), std::string("file"), std::string(" stdout"),
        std::string("stdout "), std::string("my.log"), std::string("./my.log"), path.of(""),
        path.of("missing/my.log")}) {
    const LogTarget target = convertTargetFromString(text);
    EXPECT_EQ(target.target, Target::TargetFile) << text;
    EXPECT_EQ(target.stream, nullptr) << text;
    EXPECT_FALSE(targetIsValid(target)) << text;
  }
}

TEST(LogTarget, IsInvalidWithAStreamInAFailedState) {
  const StreamCapture out(std::cout);
  const StreamCapture err(std::cerr);
  std::cout.setstate(std::ios::badbit);
  EXPECT_FALSE(targetIsValid(makeTarget(Target::TargetStdout)));
  EXPECT_TRUE(targetIsValid(makeTarget(Target::TargetStderr)));
  std::cerr.setstate(std::ios::failbit);
  EXPECT_FALSE(targetIsValid(makeTarget(Target::TargetStderr)));
  EXPECT_TRUE(targetIsValid(makeTarget(Target::TargetSystemd)));
}

TEST(LogTarget, IsInvalidAsAFileWithoutAStream) {
  EXPECT_FALSE(targetIsValid(LogTarget{}));
  EXPECT_FALSE(targetIsValid(makeTarget(Target::TargetFile)));
}

TEST(EmitLine, SkipsAStreamInAFailedStateSilently) {
  for (const std::ios::iostate state : {std::ios::badbit, std::ios::failbit, std::ios::eofbit}) {
    NotingBuffer buffer;
    const auto stream = std::make_shared<std::ostream>(&buffer);
    stream->setstate(state);
    emitLine(targetOn(stream), Level::LogCritical, "lost");
    EXPECT_EQ(buffer.notes, "") << state;
  }
}

TEST(EmitLine, SkipsATargetWithoutAStreamSilently) {
  const StreamCapture out(std::cout);
  const StreamCapture err(std::cerr);
  emitLine(LogTarget{}, Level::LogCritical, "lost");
  EXPECT_EQ(out.text() + err.text(), "");
}

}  // namespace
}  // namespace Cradle::Parser::Logging
