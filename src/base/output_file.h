// SPDX-License-Identifier: MIT
// A file that is written in texts, each handed to the operating system at once.
//
// The first text that cannot be written whole ends the writing: what follows is dropped. Nothing is
// logged; whoever needs to know asks good(). An OutputFile that opened its file closes it; the
// standard ones belong to the process.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/file_descriptor.h"

namespace Cradle {

class OutputFile {
 public:
  // Creates the file with the permissions that the process's mask leaves of read and write for
  // everyone, or truncates an existing one, which keeps its permissions (open).
  explicit OutputFile(const std::string& path);

  // The file that is open under this number, which stays open.
  explicit OutputFile(int descriptor) : number_(descriptor), good_(true) {}

  // What is moved from drops everything.
  OutputFile(OutputFile&& other) noexcept;
  OutputFile& operator=(OutputFile&& other) noexcept;
  ~OutputFile() = default;
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;

  bool isOpen() const { return number_ >= 0; }

  // Whether the file is open and nothing written to it has failed.
  bool good() const { return good_; }

  // Writes the whole text (write), with one call unless the system takes only part of it.
  void write(std::string_view text);

 private:
  std::optional<FileDescriptor> owned_;
  int number_;
  bool good_;
};

// The standard output and the standard error of the process. They live until static objects are
// destroyed; nothing is to be written after that.
OutputFile& standardOutput();
OutputFile& standardError();

}  // namespace Cradle
