#include "glob_paths.h"

#include <algorithm>

#include <glob.h>

namespace Cradle::Parser {

std::vector<std::string> globPaths(const std::string& pattern) {
  std::vector<std::string> paths;
  glob_t matches{};
  if (glob(pattern.c_str(), GLOB_MARK | GLOB_NOSORT, nullptr, &matches) == 0) {
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
