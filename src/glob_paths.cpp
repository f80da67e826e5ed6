// SPDX-License-Identifier: MIT
#include "glob_paths.h"

#include <algorithm>
#include <cerrno>

#include <dirent.h>
#include <glob.h>
#include <sys/stat.h>

#include "base/uninterrupted.h"

namespace Cradle::Parser {
namespace {

// A directory that a signal interrupts would count as missing, or as one that ends there.

void* openDirectory(const char* path) {
  return uninterrupted([&] { return opendir(path); });
}

dirent* readDirectory(void* directory) {
  const int before = errno;  // glob's callers may ask for the last error, and the end is none
  dirent* const entry = uninterrupted([&] {
    errno = 0;
    return readdir(static_cast<DIR*>(directory));
  });
  errno = errno == 0 ? before : errno;
  return entry;
}

void closeDirectory(void* directory) {
  closedir(static_cast<DIR*>(directory));
}

}  // namespace

std::vector<std::string> globPaths(const std::string& pattern) {
  std::vector<std::string> paths;
  glob_t matches{};
  matches.gl_opendir = openDirectory;
  matches.gl_readdir = readDirectory;
  matches.gl_closedir = closeDirectory;
  matches.gl_stat = stat;
  matches.gl_lstat = lstat;
  constexpr int kFlags = GLOB_MARK | GLOB_NOSORT | GLOB_ALTDIRFUNC;
  if (glob(pattern.c_str(), kFlags, nullptr, &matches) == 0) {
    paths.assign(matches.gl_pathv, matches.gl_pathv + matches.gl_pathc);
  }
  globfree(&matches);
  return paths;
}

std::vector<std::string> sortedGlobPaths(const std::string& pattern) {
  std::vector<std::string> paths = globPaths(pattern);
  std::sort(paths.begin(), paths.end());
  return paths;
}

}  // namespace Cradle::Parser
