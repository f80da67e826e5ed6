// SPDX-License-Identifier: MIT
// A file that is read from its beginning to its end, in pieces or whole.
//
// Owns its open file. A file that cannot be opened is one that cannot be read. Nothing is logged:
// callers know what the file means to them.
#pragma once

#include <optional>
#include <span>
#include <string>

#include "base/file_descriptor.h"

namespace Cradle {

class InputFile {
 public:
  explicit InputFile(const std::string& path);

  // Reads the next bytes, as many as are there and fit into `piece` (read): their number, 0 at the
  // end of the file, or nothing when it cannot be read.
  std::optional<std::size_t> read(std::span<char> piece) const;

 private:
  FileDescriptor file_;
};

// The whole file, or nothing where it cannot be opened or read, as with a directory.
std::optional<std::string> readWholeFile(const std::string& path);

}  // namespace Cradle
