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

}  // namespace
}  // namespace Cradle::Inspect
