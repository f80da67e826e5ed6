// SPDX-License-Identifier: MIT
// A file in memory that is written under a path, as the generators do, and then read.
#pragma once

#include <string>

#include <sys/mman.h>
#include <unistd.h>

#include "base/input_file.h"

namespace Cradle::Inspect {

class MemoryFile {
 public:
  // Where the system cannot make it, what is written is lost.
  MemoryFile() : number_(memfd_create("output", MFD_CLOEXEC)) {}
  ~MemoryFile() { close(number_); }
  MemoryFile(const MemoryFile&) = delete;
  MemoryFile& operator=(const MemoryFile&) = delete;

  // For this process, and for others while it lives.
  std::string path() const { return "/proc/self/fd/" + std::to_string(number_); }
  std::string outerPath() const {
    return "/proc/" + std::to_string(getpid()) + "/fd/" + std::to_string(number_);
  }
  std::string text() const { return readWholeFile(path()).value_or(""); }

 private:
  int number_;
};

}  // namespace Cradle::Inspect
