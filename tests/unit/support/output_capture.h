// SPDX-License-Identifier: MIT
// Stands in for a file that is written, while it lives, and catches what it is given.
#pragma once

#include <array>
#include <string>
#include <utility>

#include <sys/mman.h>
#include <unistd.h>

#include "base/output_file.h"

namespace Cradle::Testing {

class OutputCapture {
 public:
  explicit OutputCapture(OutputFile& file)
      : file_(file), previous_(std::exchange(file, OutputFile(memory_))) {}
  ~OutputCapture() {
    file_ = std::move(previous_);
    close(memory_);
  }
  OutputCapture(const OutputCapture&) = delete;
  OutputCapture& operator=(const OutputCapture&) = delete;

  // From now on nothing can be written to the file, until it is mended.
  void spoil() { file_ = OutputFile(""); }
  void mend() { file_ = OutputFile(memory_); }

  // Everything so far.
  std::string text() const {
    std::string text;
    std::array<char, 4096> piece{};
    for (ssize_t count = 0; (count = pread(memory_, piece.data(), piece.size(),
                                           static_cast<off_t>(text.size()))) > 0;) {
      text.append(piece.data(), static_cast<std::size_t>(count));
    }
    return text;
  }

  // What was written since the last call.
  std::string take() {
    const std::string all = text();
    return all.substr(std::exchange(taken_, all.size()));
  }

 private:
  const int memory_ = memfd_create("capture", MFD_CLOEXEC);
  OutputFile& file_;
  OutputFile previous_;
  std::size_t taken_ = 0;
};

}  // namespace Cradle::Testing
