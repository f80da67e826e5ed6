// SPDX-License-Identifier: MIT
// The directory of this process for files that have to have names, emptied for every input and
// removed at exit. It lies below $TMPDIR, else in memory, if there is a place for that: on a busy
// disk an input took a hundred times longer.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>

#include <unistd.h>

#include "common/file_tree.h"
#include "support/temporary_directory.h"

namespace Cradle::Fuzz {

class PrivateDirectory {
 public:
  PrivateDirectory() : directory_(inMemory()) {}

  // Removes what the directory holds and writes these files into it.
  void furnish(const FileTree& files) const {
    for (const auto& entry : std::filesystem::directory_iterator(directory_.path())) {
      std::filesystem::remove_all(entry.path());
    }
    for (const auto& [name, text] : files) {
      directory_.write(name, text);
    }
  }

  std::string path(std::string_view name = "") const { return directory_.path(name); }
  std::string read(std::string_view name) const { return directory_.read(name); }

 private:
  // Temporary directories look for the variable.
  static Testing::TemporaryDirectory inMemory() {
    constexpr const char* kMemory = "/dev/shm";
    if (access(kMemory, W_OK) == 0) {
      setenv("TMPDIR", kMemory, 0);
    }
    return {};
  }

  Testing::TemporaryDirectory directory_;
};

}  // namespace Cradle::Fuzz
