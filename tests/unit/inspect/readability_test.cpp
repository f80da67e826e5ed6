// SPDX-License-Identifier: MIT
#include "inspect/readability.h"

#include <fstream>
#include <string>
#include <string_view>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "support/temporary_directory.h"
#include "support/users.h"

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

TEST(Readability, LooksAtTheRightsOfWhoAsks) {
  const TemporaryDirectory directory;
  const std::string script = directory.writeScript("in/a.sh", "");
  const std::string place = directory.path("in");
  EXPECT_EQ(chmod(directory.path().c_str(), 0755), 0);
  const auto faultsWith = [&](mode_t listing, mode_t running) {
    EXPECT_EQ(chmod(script.c_str(), running), 0);
    EXPECT_EQ(chmod(place.c_str(), listing), 0);
    std::string faults;
    {
      const Testing::OrdinaryUser user;
      faults = whyNotListed(place) + "|" + whyNotRunnable(script);
    }
    EXPECT_EQ(chmod(place.c_str(), 0755), 0);
    return faults;
  };
  EXPECT_EQ(faultsWith(0555, 0555), "|");
  EXPECT_EQ(faultsWith(0555, 0111), "|Permission denied");
  EXPECT_EQ(faultsWith(0555, 0444), "|Permission denied");
  EXPECT_EQ(faultsWith(0111, 0555), "Permission denied|");
  EXPECT_EQ(faultsWith(0444, 0555), "Permission denied|Permission denied");
}

TEST(Readability, DoesNotSeeIntoADirectoryThatIsClosed) {
  const TemporaryDirectory directory;
  directory.write("in/file", "");
  EXPECT_EQ(chmod(directory.path().c_str(), 0), 0);
  {
    const Testing::OrdinaryUser user;
    EXPECT_EQ(whyNotListed(directory.path("in")), "Permission denied");
  }
  EXPECT_EQ(chmod(directory.path().c_str(), 0700), 0);
}

TEST(Readability, ListsNothingThatIsNoDirectory) {
  const TemporaryDirectory directory;
  EXPECT_EQ(whyNotListed(directory.write("a", "")), "");
  EXPECT_EQ(whyNotListed(directory.path("none")), "");
}

// The kernel reads 256 characters of a script, and takes the interpreter's name for cut off.
TEST(Readability, KnowsHowMuchOfTheFirstLineTheKernelSees) {
  const auto faultWithLine = [](std::size_t length) {
    const TemporaryDirectory directory;
    const std::size_t name = length - std::string_view("#!/").size() - directory.path().size();
    const std::string interpreter = directory.writeScript(std::string(name, 'i'), "");
    const std::string script = directory.writeScript("script", "");
    std::ofstream(script) << "#!" << interpreter;
    return whyNotRunnable(script);
  };
  EXPECT_EQ(faultWithLine(256), "");
  EXPECT_TRUE(faultWithLine(257).ends_with(": No such file or directory"));
}

// What keeps a script from being run that begins like this.
std::string faultOf(const std::string& begin) {
  const TemporaryDirectory directory;
  const std::string script = directory.writeScript("a.sh", "");
  directory.write("a.sh", begin);
  return whyNotRunnable(script);
}

TEST(Readability, LooksAtTheProgramOfAScript) {
  for (const char* const begin :
       {"", "echo\n", "#!", "#! \n", "#!/bin/sh", "#! /bin/sh -e\nx\r\n"}) {
    EXPECT_EQ(faultOf(begin), "") << begin;
  }
  EXPECT_EQ(faultOf("#!/bin/sh\r\n"), "its first line ends with a carriage return");
  EXPECT_EQ(faultOf("#!/no/such -x\n"), "its interpreter '/no/such': No such file or directory");
}

TEST(Readability, TakesAPipeForNoScript) {
  const TemporaryDirectory directory;
  const std::string pipe = directory.makePipe("a.sh");
  std::filesystem::permissions(pipe, std::filesystem::perms(0755));
  EXPECT_EQ(whyNotRunnable(pipe), "it is no regular file");
}

TEST(Readability, OpensNothingThatMightNotEnd) {
  const TemporaryDirectory directory;
  const std::string pipe = directory.makePipe("pipe");
  EXPECT_EQ(whyNoFile(pipe), "it is a named pipe");
  EXPECT_EQ(whyUnreadable(pipe), whyNoFile(pipe));
  EXPECT_EQ(whyNoFile("/dev/zero"), "it is a device");
  EXPECT_EQ(whyNoFile("/dev/null"), "");
  EXPECT_EQ(whyNoFile(directory.path("none")), "");
  EXPECT_EQ(whyNoFile(directory.path()), "");
}

}  // namespace
}  // namespace Cradle::Inspect
