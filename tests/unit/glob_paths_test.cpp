// SPDX-License-Identifier: MIT
#include "glob_paths.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <malloc.h>

#include "base/text.h"
#include "support/child_process.h"
#include "support/temporary_directory.h"

namespace Cradle::Parser {
namespace {

using Testing::inChildProcess;
using Testing::nextDescriptor;
using Testing::TemporaryDirectory;

class GlobPaths : public ::testing::Test {
 protected:
  void has(const std::vector<const char*>& names) const {
    for (const char* const name : names) {
      directory_.write(name, "");
    }
  }

  // The names below the directory that match, in ascending order and separated by blanks.
  std::string matches(const std::string& pattern) const {
    std::vector<std::string> paths = globPaths(directory_.path(pattern));
    std::sort(paths.begin(), paths.end());
    return names(paths);
  }

  std::string sortedMatches(const std::string& pattern) const {
    return names(sortedGlobPaths(directory_.path(pattern)));
  }

  TemporaryDirectory directory_;

 private:
  std::string names(const std::vector<std::string>& paths) const {
    std::string all;
    for (const std::string& path : paths) {
      EXPECT_TRUE(path.starts_with(directory_.path() + "/")) << path;
      all += (all.empty() ? "" : " ") + path.substr(directory_.path().size() + 1);
    }
    return all;
  }
};

TEST_F(GlobPaths, FindsWhatMatches) {
  has({"a.sh", "b.sh", "c.txt", ".hidden.sh", "d.sh.bak"});
  EXPECT_EQ(matches("*.sh"), "a.sh b.sh");
  EXPECT_EQ(matches("[bc].*"), "b.sh c.txt");
  EXPECT_EQ(matches("?.txt"), "c.txt");
}

TEST_F(GlobPaths, FindsAPathWithoutAnyWildcard) {
  has({"a.sh"});
  EXPECT_EQ(matches("a.sh"), "a.sh");
}

TEST_F(GlobPaths, TakesBracesAndATildeAsTheyStand) {
  has({"d1", "d2", "d{1,2}", "~"});
  EXPECT_EQ(matches("d{1,2}"), "d{1,2}");
  const std::string found = inChildProcess([this] {
    std::filesystem::current_path(directory_.path());
    return join(globPaths("~"), " ");
  });
  EXPECT_EQ(found, "~");
}

TEST_F(GlobPaths, TakesWhatFollowsABackslashAsItStands) {
  has({"d1", "d[1]", "d*", "dx"});
  EXPECT_EQ(matches("d\\[1]"), "d[1]");
  EXPECT_EQ(matches("d\\*"), "d*");
}

TEST_F(GlobPaths, MarksDirectoriesWithASlash) {
  has({"a.sh", "b.sh/file"});
  EXPECT_EQ(matches("*.sh"), "a.sh b.sh/");
  EXPECT_EQ(globPaths(directory_.path()), std::vector<std::string>{directory_.path() + "/"});
}

TEST_F(GlobPaths, FindsDanglingLinksToo) {
  std::filesystem::create_symlink("nowhere", directory_.path("a.sh"));
  EXPECT_EQ(matches("*.sh"), "a.sh");
}

TEST_F(GlobPaths, SortsInByteOrder) {
  has({"b", "a", "Z", "2-y", "10-x", "_", "\xc3\xa4", "a b"});
  EXPECT_EQ(sortedMatches("*"), "10-x 2-y Z _ a a b b \xc3\xa4");
}

TEST_F(GlobPaths, SortsADirectoryByItsNameWithTheSlash) {
  has({"a/file", "a.b", "a0"});
  EXPECT_EQ(sortedMatches("*"), "a.b a/ a0");
}

TEST_F(GlobPaths, MindsNoEarlierErrorAndKeepsIt) {
  has({"a.sh"});
  const std::string pattern = directory_.path("*.sh");
  errno = EINTR;  // which would mean to try again
  const std::vector<std::string> paths = globPaths(pattern);
  EXPECT_EQ(errno, EINTR);
  EXPECT_EQ(paths.size(), 1U);
}

TEST_F(GlobPaths, LeavesNoDirectoryOpen) {
  has({"a.sh"});
  const int before = nextDescriptor();
  matches("*.sh");
  EXPECT_EQ(nextDescriptor(), before);
}

TEST_F(GlobPaths, KeepsNoMemory) {
  has({"a.sh"});
  const std::string pattern = directory_.path("*.sh");
  globPaths(pattern);
  const std::size_t before = mallinfo2().uordblks;
  globPaths(pattern);
  EXPECT_EQ(mallinfo2().uordblks, before);
}

// Failures

TEST_F(GlobPaths, FindsNothingWhereNothingMatches) {
  has({"a.sh"});
  for (const char* const pattern : {"*.lxc", "b.sh", "missing/*.sh", "a.sh/*"}) {
    EXPECT_EQ(globPaths(directory_.path(pattern)), std::vector<std::string>{}) << pattern;
    EXPECT_EQ(sortedGlobPaths(directory_.path(pattern)), std::vector<std::string>{}) << pattern;
  }
  EXPECT_EQ(globPaths(""), std::vector<std::string>{});
}

}  // namespace
}  // namespace Cradle::Parser
