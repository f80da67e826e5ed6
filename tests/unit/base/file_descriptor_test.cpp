// SPDX-License-Identifier: MIT
#include "base/file_descriptor.h"

#include <cerrno>
#include <string>
#include <utility>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "support/child_process.h"
#include "support/temporary_directory.h"

namespace Cradle {
namespace {

using Testing::inChildProcess;

bool isOpen(int number) {
  return fcntl(number, F_GETFD) >= 0;
}

TEST(FileDescriptor, OpensAFileAndClosesItWithItsOwner) {
  int number = -1;
  {
    const FileDescriptor file("/dev/null", O_RDONLY);
    ASSERT_TRUE(file.isOpen());
    number = file.number();
    EXPECT_TRUE(isOpen(number));
  }
  EXPECT_FALSE(isOpen(number));
}

TEST(FileDescriptor, CreatesAFileWithTheModeGiven) {
  const Testing::TemporaryDirectory directory;
  const FileDescriptor file(directory.path("new"), O_WRONLY | O_CREAT, 0600);
  struct stat status {};
  ASSERT_EQ(fstat(file.number(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777U, 0600U);
}

TEST(FileDescriptor, IsNotInheritedByOtherPrograms) {
  const FileDescriptor file("/dev/null", O_RDONLY);
  EXPECT_EQ(fcntl(file.number(), F_GETFD) & FD_CLOEXEC, FD_CLOEXEC);
}

TEST(FileDescriptor, HandsItsFileOn) {
  FileDescriptor first("/dev/null", O_RDONLY);
  const int number = first.number();
  FileDescriptor second(std::move(first));
  EXPECT_EQ(second.number(), number);
  {
    FileDescriptor third("/dev/null", O_RDONLY);
    third = std::move(second);
    EXPECT_EQ(third.number(), number);
    EXPECT_TRUE(isOpen(number));
  }
  EXPECT_FALSE(isOpen(number));
}

TEST(FileDescriptor, MayHaveTheLowestNumber) {
  EXPECT_EQ(inChildProcess([] {
              close(STDIN_FILENO);
              const FileDescriptor file("/dev/null", O_RDONLY);
              return std::to_string(file.number()) + (file.isOpen() ? " is open" : " is closed");
            }),
            "0 is open");
}

// Failures

TEST(FileDescriptor, IsNotOpenWhereTheFileCannotBeOpened) {
  errno = 0;
  const FileDescriptor file("/missing/file", O_RDONLY);
  EXPECT_EQ(errno, ENOENT);
  EXPECT_FALSE(file.isOpen());
}

TEST(FileDescriptor, LeavesTheErrorToWhoAsksForItLater) {
  errno = 0;
  { const FileDescriptor file("/missing/file", O_RDONLY); }
  EXPECT_EQ(errno, ENOENT);
}

}  // namespace
}  // namespace Cradle
