// SPDX-License-Identifier: MIT
// A file in memory, for functions that want a path.
#pragma once

#include <string>
#include <string_view>

#include <sys/mman.h>
#include <unistd.h>

#include "common/check.h"

namespace Cradle::Fuzz {

class MemoryFile {
 public:
  MemoryFile()
      : number_(memfd_create("input", MFD_CLOEXEC)),
        path_("/proc/self/fd/" + std::to_string(number_)) {
    require(number_ >= 0, "there is a file in memory");
  }
  ~MemoryFile() { close(number_); }
  MemoryFile(const MemoryFile&) = delete;
  MemoryFile& operator=(const MemoryFile&) = delete;

  const std::string& path() const { return path_; }

  // Replaces what the file holds.
  void write(std::string_view text) const {
    require(ftruncate(number_, 0) == 0, "a file in memory can be emptied");
    const ssize_t written = pwrite(number_, text.data(), text.size(), 0);
    require(written == static_cast<ssize_t>(text.size()), "a file in memory can be written");
  }

 private:
  int number_;
  std::string path_;
};

// For one input in four: a line of so many characters that the reader's buffer of 64 KiB ends
// inside the `input` which follows, or that it has to grow first. Otherwise nothing, because such a
// line takes longer than most inputs.
inline std::string paddingLine(std::string_view input, char first) {
  constexpr std::size_t kBufferSize = 65536;
  const std::size_t choice = choiceFrom(input);
  if (choice % 4 != 0) {
    return "";
  }
  const std::size_t cut = (choice >> 8U) % (input.size() + 1);
  const std::size_t buffers = (choice % 16 == 0 ? 3 : 1) + cut / kBufferSize;
  std::string line(buffers * kBufferSize - cut % kBufferSize, first);
  line.back() = '\n';
  return line;
}

}  // namespace Cradle::Fuzz
