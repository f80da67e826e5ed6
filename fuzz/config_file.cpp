// SPDX-License-Identifier: MIT
// The reader of configuration files. The input is a file.
//
// Properties: every entry is delivered with its group, key and value, in order; every other line is
// a group, a comment or empty, or it is reported with the file and its number; where the reader's
// buffer ends makes no difference.

#include <string>
#include <string_view>

#include "common/check.h"
#include "common/lines.h"
#include "common/memory_file.h"
#include "common/target.h"
#include "config_file_iterator.h"
#include "support/log_capture.h"

namespace Cradle::Fuzz {
namespace {

using Parser::ConfigFileInfo;
using Parser::ConfigFileIterator;

struct Reading {
  std::string entries;
  std::string complaints;
  bool failed = false;
};

std::string shownEntry(std::string_view group, std::string_view key, std::string_view value) {
  return inQuotes(group) + inQuotes(key) + inQuotes(value) + "\n";
}

Reading readByProgram(const std::string& path) {
  const Testing::LogCapture log;
  Reading reading;
  ConfigFileInfo info(path);
  const ConfigFileIterator end(info, true);
  for (ConfigFileIterator entry(info, false); !(entry == end); ++entry) {
    reading.entries += shownEntry(entry.group(), entry.key(), entry.value());
  }
  reading.complaints = log.text();
  reading.failed = info.failed;
  return reading;
}

Reading readByHand(const std::string& text, const std::string& path) {
  Reading reading;
  for (const ConfigLine& line : configLinesOf(text)) {
    if (line.kind == ConfigLine::Kind::Entry) {
      reading.entries += shownEntry(line.group, line.name, line.value);
    } else {
      reading.complaints += complaintAbout(line, path);
      reading.failed = true;
    }
  }
  return reading;
}

void checkFile(const std::string& text) {
  static const MemoryFile file;
  file.write(text);
  const Reading actual = readByProgram(file.path());
  const Reading expected = readByHand(text, file.path());
  requireEqual(actual.entries, expected.entries, "every entry is delivered as it stands");
  requireEqual(actual.complaints, expected.complaints,
               "every wrong line is reported with its file and number");
  require(actual.failed == expected.failed, "a file fails when it holds a wrong line");
}

}  // namespace

void checkInput(const std::string& input) {
  checkFile(input);
  if (const std::string padding = paddingLine(input, '#'); !padding.empty()) {
    checkFile(padding + input);
  }
}

}  // namespace Cradle::Fuzz
