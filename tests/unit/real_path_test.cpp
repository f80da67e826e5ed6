// SPDX-License-Identifier: MIT
#include "real_path.h"

#include <filesystem>

#include <gtest/gtest.h>

#include "support/temporary_directory.h"

namespace Cradle::Parser {
namespace {

using Testing::TemporaryDirectory;

class RealPath : public ::testing::Test {
 protected:
  RealPath() : root_(std::filesystem::canonical(directory_.path())) {
    directory_.write("a/file", "");
    std::filesystem::create_symlink("a", directory_.path("link"));
    std::filesystem::create_symlink("nowhere", directory_.path("dangling"));
    std::filesystem::create_symlink("circle", directory_.path("circle"));
  }

  std::string resolved(const char* name) const { return resolvePath(directory_.path(name)); }

  TemporaryDirectory directory_;
  const std::string root_;
};

TEST_F(RealPath, RemovesDotsAndRepeatedSlashes) {
  for (const char* const name : {"a/file", "a//file", "./a/./file", "a/../a/file"}) {
    EXPECT_EQ(resolved(name), root_ + "/a/file") << name;
  }
}

TEST_F(RealPath, FollowsSymbolicLinks) {
  EXPECT_EQ(resolved("link/file"), root_ + "/a/file");
}

TEST_F(RealPath, GivesADirectoryWithoutATrailingSlash) {
  EXPECT_EQ(resolved("link/"), root_ + "/a");
  EXPECT_EQ(resolvePath("/"), "/");
}

TEST_F(RealPath, StartsARelativePathAtTheWorkingDirectory) {
  EXPECT_EQ(resolvePath("."), std::filesystem::canonical(".").string());
}

// Failures

TEST_F(RealPath, GivesNothingForAPathThatDoesNotExist) {
  for (const char* const name : {"b", "a/b", "a/file/b", "a/file/", "b/../a", "dangling"}) {
    EXPECT_EQ(resolved(name), "") << name;
  }
  EXPECT_EQ(resolvePath(""), "");
}

TEST_F(RealPath, GivesNothingForACircleOfLinks) {
  EXPECT_EQ(resolved("circle"), "");
}

}  // namespace
}  // namespace Cradle::Parser
