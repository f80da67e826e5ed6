// SPDX-License-Identifier: MIT
#include <string>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "inspect/finding_text.h"
#include "inspect/findings.h"
#include "support/inspection_bench.h"

namespace Cradle::Inspect {
namespace {

using Testing::InspectionBench;

TEST(CheckFiles, FindsNothingWhereARunReadsEverything) {
  EXPECT_EQ(InspectionBench({{"1.conf", "[A]\nK=1\n"}}).found(checkFiles), "");
}

TEST(CheckFiles, FindsEveryBadLine) {
  const InspectionBench bench({{"1.conf", "[A\nK=1\nbad\n"}});
  EXPECT_EQ(bench.found(checkFiles),
            "1.conf:1 bad-line Could not parse line as group: '[A'. Every run ends here.\n"
            "1.conf:3 bad-line Could not parse line as key: 'bad'. Every run ends here.\n");
}

TEST(CheckFiles, FindsWhatCannotBeRead) {
  const InspectionBench bench({{"1.conf/file", ""}});
  EXPECT_EQ(bench.found(checkFiles),
            "1.conf/:0 unreadable-file It cannot be read: Is a directory. A run of the same user "
            "ends here.\n");
}

TEST(CheckFiles, WaitsForNoWriter) {
  InspectionBench bench({{"1.conf", ""}}, InspectionBench::OutputType::Lxc);
  bench.directory.makePipe("2.conf");
  bench.lookAgain();
  EXPECT_EQ(bench.found(checkFiles),
            "2.conf:0 unreadable-file It cannot be read: it is a named pipe. A run of the "
            "same user ends here.\n");
}

TEST(CheckFiles, FindsThatThereIsNothing) {
  InspectionBench bench({{"1.conf", ""}});
  bench.settings.directories = {bench.directory.path("a"), bench.directory.path("1.conf")};
  bench.lookAgain();
  EXPECT_EQ(bench.found(checkFiles),
            ":0 no-configuration There is no *.conf file in a, 1.conf. Every run ends here.\n"
            "1.conf:0 missing-directory This directory is not there, or not a directory. Runs pass "
            "over it.\n"
            "a:0 missing-directory This directory is not there, or not a directory. Runs pass over "
            "it.\n");
}

TEST(CheckFiles, FindsADirectoryThatTheUserCannotRead) {
  InspectionBench bench({{"a/1.conf", ""}});
  const std::string closed = bench.directory.path("a");
  bench.settings.directories = {closed};
  EXPECT_EQ(chmod(bench.directory.path().c_str(), 0755), 0);
  EXPECT_EQ(chmod(closed.c_str(), 0), 0);
  {
    const Testing::OrdinaryUser user;
    bench.lookAgain();
    EXPECT_EQ(bench.found(checkFiles),
              "a:0 unreadable-directory This directory cannot be read: Permission denied. Not all "
              "that is in it is seen.\n");
  }
  EXPECT_EQ(chmod(closed.c_str(), 0755), 0);
}

TEST(CheckFiles, DoesNotMissAFileThatItMayNotHaveSeen) {
  InspectionBench bench({{"a/1.conf", ""}, {"b/.keep", ""}});
  const std::string closed = bench.directory.path("a");
  bench.settings.directories = {closed, bench.directory.path("b")};
  EXPECT_EQ(chmod(bench.directory.path().c_str(), 0755), 0);
  EXPECT_EQ(chmod(closed.c_str(), 0), 0);
  {
    const Testing::OrdinaryUser user;
    bench.lookAgain();
    EXPECT_EQ(bench.found(checkFiles).find("no-configuration"), std::string::npos);
    EXPECT_NE(refusalText(bench.inspection).find("a: warning: "), std::string::npos)
        << refusalText(bench.inspection);
  }
  EXPECT_EQ(chmod(closed.c_str(), 0755), 0);
}

TEST(CheckFiles, SaysThatTheUserIsNotKnown) {
  InspectionBench bench({{"1.conf", "[A]\nK=${USER}\n"}});
  bench.settings.userId = Testing::unusedUserId();
  bench.lookAgain();
  EXPECT_EQ(bench.found(checkFiles), ":0 unknown-user There is no user " +
                                         std::to_string(Testing::unusedUserId()) +
                                         ". Every run ends here.\n");
  bench.settings.userId = Generators::kUnknownUser;
  bench.lookAgain();
  EXPECT_EQ(
      bench.found(checkFiles),
      ":0 no-user The user of a run is not known: ${HOME}, ${USER} and ${USER_ID} are left as "
      "they are.\n");
}

}  // namespace
}  // namespace Cradle::Inspect
