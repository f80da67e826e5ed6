// SPDX-License-Identifier: MIT
// A second path to a directory, without capital letters.
//
// Log targets are opened in lower case, but the names of temporary directories are mixed.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

#include <fcntl.h>
#include <unistd.h>

namespace Cradle::Testing {

class LowerCasePath {
 public:
  explicit LowerCasePath(const std::string& directory)
      : descriptor_(open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
    if (descriptor_ < 0) {
      throw std::runtime_error("cannot open " + directory);
    }
  }
  ~LowerCasePath() { close(descriptor_); }
  LowerCasePath(const LowerCasePath&) = delete;
  LowerCasePath& operator=(const LowerCasePath&) = delete;

  // The path of `name`, as it stands, in the directory.
  std::string of(std::string_view name) const {
    return "/proc/self/fd/" + std::to_string(descriptor_) + "/" + std::string(name);
  }

 private:
  int descriptor_;
};

}  // namespace Cradle::Testing
