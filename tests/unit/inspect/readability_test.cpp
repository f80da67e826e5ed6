#include "inspect/readability.h"

#include <string>

#include <gtest/gtest.h>

#include "support/temporary_directory.h"

namespace Cradle::Inspect {
namespace {

using Testing::TemporaryDirectory;

TEST(Readability, FindsNoFaultWithFilesThatWork) {
  const TemporaryDirectory directory;
  EXPECT_EQ(whyUnreadable(directory.write("a", "x")), "");
  EXPECT_EQ(whyUnreadable(directory.write("empty", "")), "");
  EXPECT_EQ(whyNotRunnable(directory.writeScript("a.sh", "")), "");
}

TEST(Readability, TellsWhyAFileDoesNotWork) {
  const TemporaryDirectory directory;
  EXPECT_EQ(whyUnreadable(directory.path("none")), "No such file or directory");
  EXPECT_EQ(whyUnreadable(directory.path()), "Is a directory");
  EXPECT_EQ(whyNotRunnable(directory.path("none")), "No such file or directory");
  EXPECT_EQ(whyNotRunnable(directory.path() + "/"), "Is a directory");
  EXPECT_EQ(whyNotRunnable(directory.write("a.sh", "")), "Permission denied");
}

TEST(Readability, OpensNothingThatMightNotEnd) {
  const TemporaryDirectory directory;
  const std::string pipe = directory.makePipe("pipe");
  EXPECT_EQ(whyNoFile(pipe), "it is a named pipe, where a run waits for a writer");
  EXPECT_EQ(whyUnreadable(pipe), whyNoFile(pipe));
  EXPECT_EQ(whyNoFile("/dev/zero"), "it is a device");
  EXPECT_EQ(whyNoFile("/dev/null"), "");
  EXPECT_EQ(whyNoFile(directory.path("none")), "");
  EXPECT_EQ(whyNoFile(directory.path()), "");
}

}  // namespace
}  // namespace Cradle::Inspect
