// The reader of configuration files: an input iterator over the entries of one file.
//
// A file is lines of "[group]", "key=value" and comments that begin with "#" or ";" in the first
// column; nothing is trimmed, continued, quoted or escaped. The iterator is the file's input stream
// itself and reads each line once. A bad line is logged as an error with path, line number and
// text, sets the failed flag of the ConfigFileInfo, and reading goes on to the next entry. A file
// that cannot be opened or read sets the flag without a message.
#pragma once

#include <cstdint>
#include <fstream>
#include <string>
#include <string_view>

#include "config_file_info.h"

namespace Cradle::Parser {

class ConfigFileIterator : private std::ifstream {
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
  // Keys before the first group line belong to the group with the empty name.
  std::string_view group() const { return group_; }
  std::string_view key() const { return std::string_view(line_).substr(0, keyLength_); }
  std::string_view value() const { return std::string_view(line_).substr(valueBegin_); }

 private:
  bool readLine();
  bool takeLine();
  void takeGroup();
  bool takeKey();
  void reject(std::string_view reason);

  ConfigFileInfo& info_;
  std::streamoff position_ = 0;      // where the last line read begins
  std::streamoff nextPosition_ = 0;  // where the next one does
  std::uint32_t lineNumber_ = 0;     // of the last line read
  std::string line_;
  std::size_t keyLength_ = 0;
  std::size_t valueBegin_ = 0;
  std::string group_;
};

}  // namespace Cradle::Parser
