// SPDX-License-Identifier: MIT
// The reader of configuration files: an input iterator over the entries of one file.
//
// A file is lines of "[group]", "key=value" and comments that begin with "#" or ";" in the first
// column; nothing is trimmed, continued, quoted or escaped. Each line is read once. A bad line is
// logged as an error with path, line number and text, sets the failed flag of the ConfigFileInfo,
// and reading goes on to the next entry. A file that cannot be opened or read sets the flag without
// a message, and the end is then never reached: loops ask the flag too.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "base/line_reader.h"
#include "config_file_info.h"

namespace Cradle::Parser {

class ConfigFileIterator {
 public:
  // The begin iterator opens the file of `info` and advances to its first entry; the end iterator
  // touches no file. `info` must outlive the iterator.
  ConfigFileIterator(ConfigFileInfo& info, bool atEnd);

  // Reads up to the next entry or to the end of the file.
  ConfigFileIterator& operator++();

  // Iterators over the same file are equal where their positions are.
  bool operator==(const ConfigFileIterator& other) const {
    return &info_ == &other.info_ && position_ == other.position_;
  }

  // The current entry, valid until the next advance, and empty before the first and at the end.
  // Keys before the first group line belong to the group with the empty name, and those behind a
  // bad one to the group before; where bad lines are listed, to a group named like that line.
  std::string_view group() const { return group_; }
  std::string_view key() const { return key_; }
  std::string_view value() const { return value_; }

  // The number of the last line read, which is that of the current entry.
  std::uint32_t lineNumber() const { return lineNumber_; }

 private:
  bool readLine();
  bool takeLine();
  void takeGroup();
  bool takeKey();
  void reject(std::string_view reason);
  void rejectGroup(std::string_view reason);

  ConfigFileInfo& info_;
  std::optional<LineReader> lines_;  // none for the end iterator
  std::string_view line_;            // the last line read
  std::uint32_t lineNumber_ = 0;     // its number
  std::uint64_t position_ = 0;       // where it begins
  std::uint64_t nextPosition_ = 0;   // where the next one does
  std::string_view key_;
  std::string_view value_;
  std::string group_;
};

}  // namespace Cradle::Parser
