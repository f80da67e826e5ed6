// SPDX-License-Identifier: MIT
// An open file of the operating system, closed with its owner.
//
// Files are opened so that the programs which this one starts do not inherit them.
#pragma once

#include <string>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

#include "base/uninterrupted.h"

namespace Cradle {

class FileDescriptor {
 public:
  // Opens `path` (open). Where that fails isOpen() is false and errno says why.
  FileDescriptor(const std::string& path, int flags, mode_t mode = 0)
      : number_(uninterrupted([&] { return open(path.c_str(), flags | O_CLOEXEC, mode); })) {}

  ~FileDescriptor() {
    if (isOpen()) {
      close(number_);
    }
  }
  FileDescriptor(FileDescriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  FileDescriptor& operator=(FileDescriptor&& other) noexcept {
    std::swap(number_, other.number_);
    return *this;
  }
  FileDescriptor(const FileDescriptor&) = delete;
  FileDescriptor& operator=(const FileDescriptor&) = delete;

  bool isOpen() const { return number_ >= 0; }
  int number() const { return number_; }

 private:
  int number_;
};

}  // namespace Cradle
