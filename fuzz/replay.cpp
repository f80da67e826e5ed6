// SPDX-License-Identifier: MIT
// The main program of a target without the fuzzer: checks every file of the directories given.
//
// Prints the name of each file before it is checked, so that the last one is the culprit when a
// check ends the process. Finding no file at all is a failure.

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "common/target.h"

namespace {

std::vector<std::filesystem::path> filesBelow(const std::filesystem::path& directory) {
  std::vector<std::filesystem::path> files;
  std::error_code missing;  // which leaves nothing to walk
  for (const auto& entry : std::filesystem::recursive_directory_iterator(directory, missing)) {
    if (entry.is_regular_file()) {
      files.push_back(entry.path());
    }
  }
  std::sort(files.begin(), files.end());
  return files;
}

std::string contentOf(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace

int main(int argc, char** argv) {
  std::size_t count = 0;
  for (const std::string& directory : std::vector<std::string>(argv + 1, argv + argc)) {
    for (const std::filesystem::path& file : filesBelow(directory)) {
      std::printf("%s\n", file.c_str());
      std::fflush(stdout);
      Cradle::Fuzz::checkInput(contentOf(file));
      ++count;
    }
  }
  std::printf("%zu inputs checked\n", count);
  return count == 0 ? EXIT_FAILURE : EXIT_SUCCESS;
}
