// SPDX-License-Identifier: MIT
#include "main/standard_streams.h"

#include <string>
#include <vector>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "support/child_process.h"
#include "support/temporary_directory.h"

namespace Cradle::CommandLine {
namespace {

using Testing::inChildProcess;
using Testing::limitDescriptors;
using Testing::nextDescriptor;
using Testing::TemporaryDirectory;

// What a descriptor is: "null", "file" (everything else that is open) or "closed".
std::string kindOf(int descriptor) {
  struct stat status {};
  struct stat null {};
  if (fstat(descriptor, &status) != 0) {
    return "closed";
  }
  const bool isNull =
      stat("/dev/null", &null) == 0 && S_ISCHR(status.st_mode) && status.st_rdev == null.st_rdev;
  return isNull ? "null" : "file";
}

class StandardStreams : public ::testing::Test {
 protected:
  // Opens the three standard descriptors on a file and closes those given.
  void leaveWithout(const std::vector<int>& descriptors) const {
    const int file = open(directory_.path("file").c_str(), O_RDWR | O_CREAT, 0600);
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
      dup2(file, descriptor);
    }
    close(file);
    for (const int descriptor : descriptors) {
      close(descriptor);
    }
  }

  // What the three are after they have been filled, in a process that starts without those given.
  std::string filled(const std::vector<int>& descriptors) const {
    return inChildProcess([&] {
      leaveWithout(descriptors);
      fillStandardDescriptors();
      return kindOf(STDIN_FILENO) + " " + kindOf(STDOUT_FILENO) + " " + kindOf(STDERR_FILENO);
    });
  }

  TemporaryDirectory directory_;
};

TEST_F(StandardStreams, AreLeftAloneWhereTheyAreOpen) {
  EXPECT_EQ(filled({}), "file file file");
}

TEST_F(StandardStreams, AreReplacedWhereTheyAreClosed) {
  EXPECT_EQ(filled({0}), "null file file");
  EXPECT_EQ(filled({1}), "file null file");
  EXPECT_EQ(filled({2}), "file file null");
  EXPECT_EQ(filled({0, 1}), "null null file");
  EXPECT_EQ(filled({0, 2}), "null file null");
  EXPECT_EQ(filled({1, 2}), "file null null");
  EXPECT_EQ(filled({0, 1, 2}), "null null null");
}

TEST_F(StandardStreams, CanBeReadAndWrittenWhereTheyAreReplaced) {
  const std::string results = inChildProcess([this] {
    leaveWithout({0, 1, 2});
    fillStandardDescriptors();
    char byte = 'x';
    std::string all;
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
      all += std::to_string(read(descriptor, &byte, 1)) + std::to_string(write(descriptor, "x", 1));
    }
    return all;
  });
  EXPECT_EQ(results, "010101");
}

TEST_F(StandardStreams, TakeNoOtherDescriptor) {
  const std::string numbers = inChildProcess([this] {
    leaveWithout({});
    const int before = nextDescriptor();
    close(STDIN_FILENO);
    close(STDOUT_FILENO);
    fillStandardDescriptors();
    return std::to_string(nextDescriptor() - before);
  });
  EXPECT_EQ(numbers, "0");
}

// Failures

TEST_F(StandardStreams, StayClosedWhereNothingCanBeOpened) {
  const std::string kinds = inChildProcess([this] {
    leaveWithout({0, 1});
    limitDescriptors(0);
    fillStandardDescriptors();
    return kindOf(STDIN_FILENO) + " " + kindOf(STDOUT_FILENO) + " " + kindOf(STDERR_FILENO);
  });
  EXPECT_EQ(kinds, "closed closed file");
}

}  // namespace
}  // namespace Cradle::CommandLine
