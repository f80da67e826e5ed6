// SPDX-License-Identifier: MIT
#include "base/output_file.h"

#include <string>
#include <utility>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "support/child_process.h"
#include "support/temporary_directory.h"

namespace Cradle {
namespace {

using Testing::inChildProcess;
using Testing::interruptOften;
using Testing::nextDescriptor;
using Testing::TemporaryDirectory;

class OutputFileTest : public ::testing::Test {
 protected:
  std::string path() const { return directory_.path("out"); }
  std::string written() const { return directory_.read("out"); }

  TemporaryDirectory directory_;
};

TEST_F(OutputFileTest, HasEveryTextInTheFileAtOnce) {
  OutputFile file(path());
  EXPECT_TRUE(file.good());
  EXPECT_EQ(written(), "");
  file.write("a");
  EXPECT_EQ(written(), "a");
  file.write("");
  file.write(std::string("\0b\n", 3));
  EXPECT_EQ(written(), std::string("a\0b\n", 4));
  EXPECT_TRUE(file.good());
}

TEST_F(OutputFileTest, MayHaveTheLowestNumber) {
  EXPECT_EQ(inChildProcess([&] {
              close(STDIN_FILENO);
              return std::string(OutputFile(path()).isOpen() ? "open" : "closed");
            }),
            "open");
}

TEST_F(OutputFileTest, EmptiesAnExistingFileAndKeepsItsMode) {
  directory_.write("out", "earlier");
  ASSERT_EQ(chmod(path().c_str(), 0640), 0);
  OutputFile(path()).write("new");
  struct stat status {};
  ASSERT_EQ(stat(path().c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777U, 0640U);
  EXPECT_EQ(written(), "new");
}

TEST_F(OutputFileTest, CreatesAFileWithTheModeThatTheMaskLeaves) {
  for (const mode_t mask : {0U, 027U}) {
    const mode_t callers = umask(mask);
    unlink(path().c_str());
    { const OutputFile file(path()); }
    umask(callers);
    struct stat status {};
    ASSERT_EQ(stat(path().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777U, 0666U & ~mask);
  }
}

TEST_F(OutputFileTest, ClosesAFileThatItOpened) {
  const int before = nextDescriptor();
  { const OutputFile file(path()); }
  EXPECT_EQ(nextDescriptor(), before);
}

TEST_F(OutputFileTest, LeavesAFileThatIsAnothersOpen) {
  const FileDescriptor owner(path(), O_WRONLY | O_CREAT, 0600);
  { OutputFile(owner.number()).write("a"); }
  OutputFile(owner.number()).write("b");
  EXPECT_EQ(written(), "ab");
}

TEST_F(OutputFileTest, GoesOnWhereItIsMovedTo) {
  OutputFile third(directory_.path("other"));
  {
    OutputFile first(path());
    first.write("a");
    OutputFile second(std::move(first));
    second.write("b");
    third = std::move(second);
  }
  third.write("c");
  EXPECT_EQ(written(), "abc");
  EXPECT_EQ(directory_.read("other"), "");
}

TEST_F(OutputFileTest, IsFailedWhereItIsMovedFrom) {
  OutputFile first(path());
  const OutputFile second(std::move(first));
  EXPECT_TRUE(second.good());
  EXPECT_FALSE(first.good());
  EXPECT_FALSE(first.isOpen());
  first.write("lost");
  EXPECT_EQ(written(), "");
}

// Writes the text to a pipe, in a process of its own that a timer interrupts all the time.
void writeInterrupted(int pipe, const std::string& text) {
  if (fork() == 0) {
    interruptOften();
    OutputFile(pipe).write(text);
    _exit(0);
  }
}

TEST_F(OutputFileTest, WritesOnWhereTheSystemTakesOnlyAPart) {
  std::string text;
  while (text.size() < 1'000'000) {
    text += std::to_string(text.size()) + '\n';
  }
  EXPECT_EQ(inChildProcess([&] {
              int ends[2];
              if (pipe(ends) != 0) {
                return std::string("no pipe");
              }
              writeInterrupted(ends[1], text);
              close(ends[1]);
              usleep(50'000);  // the pipe is full, and the writer interrupted in the middle
              std::string received;
              char piece[1000];
              for (ssize_t count; (count = read(ends[0], piece, sizeof piece)) > 0;) {
                received.append(piece, static_cast<std::size_t>(count));
              }
              return received;
            }),
            text);
}

// What `action` leaves in the pipe that stands under that number, in a process of its own.
std::string caught(int number, void (*action)()) {
  return inChildProcess([=] {
    int ends[2];
    if (pipe(ends) != 0) {
      return std::string("no pipe");
    }
    dup2(ends[1], number);
    action();
    char text[20];
    const ssize_t count = read(ends[0], text, sizeof text);
    return std::string(text, static_cast<std::size_t>(count));
  });
}

TEST(StandardFiles, AreThoseOfTheProcess) {
  EXPECT_EQ(caught(STDOUT_FILENO, [] { standardOutput().write("output"); }), "output");
  EXPECT_EQ(caught(STDERR_FILENO, [] { standardError().write("errors"); }), "errors");
}

// Failures

TEST_F(OutputFileTest, DropsEverythingWhereItCannotBeOpened) {
  OutputFile file(directory_.path("missing/out"));
  EXPECT_FALSE(file.good());
  file.write("a");
  EXPECT_FALSE(file.good());
}

TEST_F(OutputFileTest, DropsEverythingAfterAFailure) {
  const FileDescriptor readOnly(directory_.write("out", "text"), O_RDONLY);
  OutputFile file(readOnly.number());
  EXPECT_TRUE(file.good());
  file.write("");
  EXPECT_TRUE(file.good());
  file.write("a");
  EXPECT_FALSE(file.good());
  EXPECT_TRUE(file.isOpen());
  EXPECT_EQ(written(), "text");
}

TEST_F(OutputFileTest, StaysFailedWhenTheFileCouldBeWrittenAgain) {
  const FileDescriptor full("/dev/full", O_WRONLY);
  OutputFile file(full.number());
  file.write("a");
  ASSERT_FALSE(file.good());
  const FileDescriptor other(path(), O_WRONLY | O_CREAT, 0600);
  dup2(other.number(), full.number());
  file.write("b");
  EXPECT_EQ(written(), "");
}

}  // namespace
}  // namespace Cradle
