// SPDX-License-Identifier: MIT
#include "config_file_iterator.h"

#include <limits>

#include "base/character_set.h"
#include "library_logger.h"

namespace Cradle::Parser {
namespace {

// No line begins here, however long the file grows.
constexpr std::uint64_t kEndPosition = std::numeric_limits<std::uint64_t>::max();

constexpr CharacterSet kNameCharacters(
    " -.0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ_abcdefghijklmnopqrstuvwxyz");
constexpr std::string_view kMarkedGroup = "\xef\xbb\xbf[";  // behind a byte order mark
constexpr char kSeparator = '=';                            // not a name character

// A key may hold blanks but not begin with one.
bool beginsKey(char character) {
  return character != ' ' && kNameCharacters.contains(character);
}

bool isCommentOrBlank(std::string_view line) {
  return line.empty() || line.front() == '#' || line.front() == ';';
}

}  // namespace

ConfigFileIterator::ConfigFileIterator(ConfigFileInfo& info, bool atEnd) : info_(info) {
  if (atEnd) {
    position_ = kEndPosition;
    return;
  }
  lines_.emplace(info.path);
  ++*this;
}

ConfigFileIterator& ConfigFileIterator::operator++() {
  while (readLine()) {
    if (takeLine()) {
      break;
    }
  }
  return *this;
}

// Whether there was another line.
bool ConfigFileIterator::readLine() {
  key_ = {};
  value_ = {};
  if (lines_->next()) {
    line_ = lines_->line();
    position_ = nextPosition_;
    nextPosition_ += line_.size() + 1;
    ++lineNumber_;
    return true;
  }
  if (lines_->failed()) {
    info_.failed = true;
  } else {
    position_ = kEndPosition;
  }
  return false;
}

// Whether the line is an entry.
bool ConfigFileIterator::takeLine() {
  if (isCommentOrBlank(line_)) {
    return false;
  }
  if (beginsKey(line_.front())) {
    return takeKey();
  }
  if (line_.front() == '[') {
    takeGroup();
  } else if (line_.starts_with(kMarkedGroup)) {
    rejectGroup("Unexpected line in ");
  } else {
    reject("Unexpected line in ");
  }
  return false;
}

void ConfigFileIterator::takeGroup() {
  if (line_.back() != ']') {
    rejectGroup("Could not parse line as group in ");
    return;
  }
  const std::string_view name = line_.substr(1, line_.size() - 2);
  if (!kNameCharacters.containsAll(name)) {
    rejectGroup("Group name contains invalid characters in ");
    return;
  }
  group_ = name;
}

bool ConfigFileIterator::takeKey() {
  const std::size_t length = kNameCharacters.prefixLength(line_);
  if (length == line_.size() || line_[length] != kSeparator) {
    const bool hasSeparator = line_.find(kSeparator) != std::string_view::npos;
    reject(hasSeparator ? "Key contains invalid characters in "
                        : "Could not parse line as key in ");
    return false;
  }
  key_ = line_.substr(0, length);
  value_ = line_.substr(length + 1);
  return true;
}

// Who lists bad lines goes on reading behind them.
void ConfigFileIterator::rejectGroup(std::string_view reason) {
  reject(reason);
  if (info_.rejected != nullptr) {
    group_ = line_;
  }
}

void ConfigFileIterator::reject(std::string_view reason) {
  info_.failed = true;
  if (info_.rejected != nullptr) {
    info_.rejected->push_back({lineNumber_, reason, std::string(line_)});
  }
  libraryLogger().error() << reason << info_.path << " (" << lineNumber_ << "): '" << line_ << "'";
}

}  // namespace Cradle::Parser
