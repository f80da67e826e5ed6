// SPDX-License-Identifier: MIT
// A journal of configuration files that are written in the test itself.
#pragma once

#include <string>
#include <string_view>

#include "base/text.h"
#include "config_parser.h"
#include "inspect/journal_reader.h"
#include "support/log_capture.h"
#include "support/temporary_directory.h"

namespace Cradle::Testing {

class JournalBench {
 public:
  // Reads each text as a file "1.conf", "2.conf", ...
  explicit JournalBench(std::initializer_list<std::string_view> texts, bool execute = false) {
    parser.addTemplate("NAME", "name");
    for (const std::string_view text : texts) {
      directory.write(std::to_string(++files_) + ".conf", text);
    }
    const LogCapture log(LogCapture::Level::LogCritical);
    journal = Inspect::readJournal({directory.path()}, parser, execute);
  }

  const Inspect::History& history(std::string_view group, std::string_view key) const {
    const Inspect::History* const found = journal.find(group, key);
    if (found == nullptr) {
      throw std::runtime_error("there is no such key");
    }
    return *found;
  }

  // "FILE:LINE" with the number of the file.
  std::string placeOf(Inspect::Place place) const {
    return std::to_string(place.file + 1) + ":" + std::to_string(place.line);
  }

  TemporaryDirectory directory;
  Parser::ConfigParser parser{-1};
  Inspect::Journal journal;

 private:
  int files_ = 0;
};

}  // namespace Cradle::Testing
