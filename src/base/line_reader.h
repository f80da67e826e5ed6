// SPDX-License-Identifier: MIT
// The lines of a file, one after the other, without a copy of each.
//
// A line is what stands before a line feed, or between the last one and the end of the file. Lines
// may hold any bytes and be of any length; memory grows with the longest one only. A file is given
// up when it cannot be opened or read, or when a line does not fit into memory.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "base/input_file.h"

namespace Cradle {

class LineReader {
 public:
  explicit LineReader(const std::string& path);

  // Goes on to the next line. False at the end of the file and when it is given up; what stands
  // before that without a line feed is lost then.
  bool next();

  // The current line, valid until the next call of next().
  std::string_view line() const { return line_; }

  // Whether the file has been given up.
  bool failed() const { return state_ == State::Failed; }

 private:
  enum class State : std::uint8_t { Reading, AtEnd, Failed };
  using Array = char[];  // NOLINT(modernize-avoid-c-arrays): a vector would zero it first

  bool readMore();
  bool makeRoom();

  InputFile file_;
  State state_ = State::Reading;
  std::size_t capacity_;
  std::unique_ptr<Array> buffer_;
  std::size_t begin_ = 0;  // of what has not been taken yet
  std::size_t end_ = 0;    // of what has been read
  std::string_view line_;
};

}  // namespace Cradle
