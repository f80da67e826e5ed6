// SPDX-License-Identifier: MIT
#include "logging/log_target.h"

#include <array>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <memory>
#include <string>

#include <dlfcn.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

#include "logging/logger_config.h"
#include "support/child_process.h"
#include "support/lower_case_path.h"
#include "support/output_capture.h"
#include "support/temporary_directory.h"

namespace Cradle::Parser::Logging {
namespace {

using ::testing::HasSubstr;
using Testing::limitDescriptors;
using Testing::LowerCasePath;
using Testing::nextDescriptor;
using Testing::OutputCapture;
using ::testing::StrEq;
using Testing::TemporaryDirectory;

LogTarget targetOn(OutputFile& file) {
  return {Target::TargetFile, {std::shared_ptr<void>(), &file}};
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
  const OutputFile* file;
};

const NamedTarget kNamedTargets[] = {
    {"systemd", Target::TargetSystemd, nullptr},
    {"SYSTEMD", Target::TargetSystemd, nullptr},
    {"stdout", Target::TargetStdout, &standardOutput()},
    {"StdOut", Target::TargetStdout, &standardOutput()},
    {"stderr", Target::TargetStderr, &standardError()},
    {"Stderr", Target::TargetStderr, &standardError()},
};

TEST(LogTarget, IsKnownByItsNameInAnyCase) {
  for (const NamedTarget& row : kNamedTargets) {
    const LogTarget target = convertTargetFromString(row.name);
    EXPECT_EQ(target.target, row.target) << row.name;
    EXPECT_EQ(target.file.get(), row.file) << row.name;
  }
}

TEST(LogTarget, IsMadeWithItsStandardFile) {
  for (const NamedTarget& row : kNamedTargets) {
    EXPECT_EQ(makeTarget(row.target).target, row.target);
    EXPECT_EQ(makeTarget(row.target).file.get(), row.file);
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

TEST(LogTarget, IsValidWithAGoodFileAndAlwaysForTheJournal) {
  const OutputCapture out(standardOutput());
  const OutputCapture err(standardError());
  EXPECT_TRUE(targetIsValid(makeTarget(Target::TargetSystemd)));
  EXPECT_TRUE(targetIsValid(makeTarget(Target::TargetStdout)));
  EXPECT_TRUE(targetIsValid(makeTarget(Target::TargetStderr)));
}

TEST(LogTarget, DropsAllWhereItHasNeitherTheJournalNorAFile) {
  EXPECT_TRUE(targetDropsAll(LogTarget{}));
  EXPECT_TRUE(targetDropsAll(makeTarget(Target::TargetFile)));
  EXPECT_FALSE(targetDropsAll(makeTarget(Target::TargetSystemd)));
  EXPECT_FALSE(targetDropsAll(makeTarget(Target::TargetStderr)));
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
  OutputCapture out(standardOutput());
  for (const Line& row : kLines) {
    emitLine(targetOn(standardOutput()), row.level, "some text");
    EXPECT_EQ(out.take(), row.line);
  }
}

TEST(EmitLine, KeepsTheTextAsItIs) {
  const OutputCapture out(standardOutput());
  const std::string text("%s\0\xff\n", 5);
  emitLine(targetOn(standardOutput()), Level::LogInfo, text);
  EXPECT_EQ(out.text(), "INFO: " + text + "\n");
}

TEST(EmitLine, WritesALineInOnePiece) {
  int ends[2];
  ASSERT_EQ(socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends), 0);
  OutputFile file(ends[1]);
  emitLine(targetOn(file), Level::LogInfo, "a");
  emitLine(targetOn(file), Level::LogError, "b");
  // What was written with one call is read with one.
  std::array<char, 100> piece{};
  const auto received = [&] {
    const ssize_t count = read(ends[0], piece.data(), piece.size());
    return std::string(piece.data(), static_cast<std::size_t>(count));
  };
  EXPECT_EQ(received(), "INFO: a\n");
  EXPECT_EQ(received(), "ERROR: b\n");
  close(ends[0]);
  close(ends[1]);
}

// The journal. A library that is loaded already stands in for any of the same name that is asked
// for later, so each of these tests needs a process in which none has been.

class JournalDeathTest : public ::testing::Test {
 protected:
  JournalDeathTest() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }

  [[noreturn]] static void show(Level level, std::string_view text) {
    if (dlopen(SYSTEMD_STUB, RTLD_NOW) != nullptr) {
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

TEST(LogTarget, IsWithoutAFileForAnyOtherText) {
  const TemporaryDirectory directory;
  const LowerCasePath path(directory.path());
  for (const std::string& text :
       {std::string(), std::string("syslog"), std::string("file"), std::string(" stdout"),
        std::string("stdout "), std::string("my.log"), std::string("./my.log"), path.of(""),
        path.of("missing/my.log")}) {
    const LogTarget target = convertTargetFromString(text);
    EXPECT_EQ(target.target, Target::TargetFile) << text;
    EXPECT_EQ(target.file, nullptr) << text;
    EXPECT_FALSE(targetIsValid(target)) << text;
  }
}

TEST(LogTarget, IsInvalidWithAFileThatCannotBeWritten) {
  OutputCapture out(standardOutput());
  OutputCapture err(standardError());
  out.spoil();
  EXPECT_FALSE(targetIsValid(makeTarget(Target::TargetStdout)));
  EXPECT_TRUE(targetIsValid(makeTarget(Target::TargetStderr)));
  err.spoil();
  EXPECT_FALSE(targetIsValid(makeTarget(Target::TargetStderr)));
  EXPECT_TRUE(targetIsValid(makeTarget(Target::TargetSystemd)));
}

TEST(LogTarget, IsInvalidAsAFileWithoutOne) {
  EXPECT_FALSE(targetIsValid(LogTarget{}));
  EXPECT_FALSE(targetIsValid(makeTarget(Target::TargetFile)));
}

TEST(EmitLine, SkipsAFileThatCannotBeWrittenSilently) {
  OutputCapture out(standardOutput());
  const OutputCapture err(standardError());
  out.spoil();
  emitLine(targetOn(standardOutput()), Level::LogCritical, "lost");
  EXPECT_EQ(out.text() + err.text(), "");
}

TEST(EmitLine, SkipsATargetWithoutAFileSilently) {
  const OutputCapture out(standardOutput());
  const OutputCapture err(standardError());
  emitLine(LogTarget{}, Level::LogCritical, "lost");
  EXPECT_EQ(out.text() + err.text(), "");
}

}  // namespace
}  // namespace Cradle::Parser::Logging
