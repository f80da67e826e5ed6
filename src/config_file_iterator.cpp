#include "config_file_iterator.h"

#include <limits>

#include "base/character_set.h"
#include "library_logger.h"

namespace Cradle::Parser {
namespace {

// Also for files that grow or cannot be sought in, the end is one position like no other.
constexpr std::streamoff kEndPosition = std::numeric_limits<std::streamoff>::max();

constexpr CharacterSet kNameCharacters(
    " -.0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ_abcdefghijklmnopqrstuvwxyz");
constexpr CharacterSet kKeyLineStarts(
    "-.0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ_abcdefghijklmnopqrstuvwxyz");

bool isCommentOrBlank(std::string_view line) {
  return line.empty() || line.front() == '#' || line.front() == ';';
}

}  // namespace

ConfigFileIterator::ConfigFileIterator(ConfigFileInfo& info, bool atEnd) : info_(info) {
  if (atEnd) {
    position_ = kEndPosition;
    return;
  }
  open(info.path);
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

// Whether there was another line. A last line without line feed is one.
bool ConfigFileIterator::readLine() {
  keyLength_ = 0;
  valueBegin_ = 0;
  if (std::getline(*this, line_)) {
    position_ = nextPosition_;
    nextPosition_ += static_cast<std::streamoff>(line_.size()) + 1;
    ++lineNumber_;
    return true;
  }
  line_.clear();
  if (eof()) {
    position_ = kEndPosition;
  } else {
    info_.failed = true;
  }
  return false;
}

// Whether the line is an entry.
bool ConfigFileIterator::takeLine() {
  if (isCommentOrBlank(line_)) {
    return false;
  }
  if (kKeyLineStarts.contains(line_.front())) {
    return takeKey();
  }
  if (line_.front() == '[') {
    takeGroup();
  } else {
    reject("Unexpected line in ");
  }
  return false;
}

void ConfigFileIterator::takeGroup() {
  if (line_.back() != ']') {
    reject("Could not parse line as group in ");
    return;
  }
  const std::string_view name = std::string_view(line_).substr(1, line_.size() - 2);
  if (!kNameCharacters.containsAll(name)) {
    reject("Group name contains invalid characters in ");
    return;
  }
  group_ = name;
}

bool ConfigFileIterator::takeKey() {
  const std::size_t separator = line_.find('=');
  if (separator == std::string::npos) {
    reject("Could not parse line as key in ");
    return false;
  }
  if (!kNameCharacters.containsAll(std::string_view(line_).substr(0, separator))) {
    reject("Key contains invalid characters in ");
    return false;
  }
  keyLength_ = separator;
  valueBegin_ = separator + 1;
  return true;
}

void ConfigFileIterator::reject(std::string_view reason) {
  info_.failed = true;
  libraryLogger().error() << reason << info_.path << " (" << lineNumber_ << "): '" << line_ << "'";
}

}  // namespace Cradle::Parser
