// The directory of this process for files that have to have names: below $TMPDIR or /tmp, emptied
// for every input and removed at exit.
#pragma once

#include <filesystem>
#include <string>

#include "common/file_tree.h"
#include "support/temporary_directory.h"

namespace Cradle::Fuzz {

class PrivateDirectory {
 public:
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
  Testing::TemporaryDirectory directory_;
};

}  // namespace Cradle::Fuzz
