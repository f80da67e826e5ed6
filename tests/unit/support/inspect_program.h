// SPDX-License-Identifier: MIT
// The inspecting program, run in the process of the test.
#pragma once

#include <string>
#include <vector>

#include "inspect/program.h"
#include "support/log_capture.h"
#include "support/temporary_directory.h"
#include "support/users.h"

namespace Cradle::Testing {

struct InspectProgram {
  // Runs it for the user who runs the tests, with the directory as the configuration.
  Inspect::Answer run(std::vector<std::string> words) const {
    words.insert(words.begin(), {"program", "--config=" + directory.path(),
                                 "--user-id=" + std::to_string(thisUser().uid)});
    return runAlone(std::move(words));
  }

  // Runs it with these arguments alone, the program's name first.
  static Inspect::Answer runAlone(std::vector<std::string> words) {
    std::vector<char*> arguments;
    for (std::string& word : words) {
      arguments.push_back(word.data());
    }
    const LogCapture log(LogCapture::Level::LogCritical);
    return Inspect::runProgram(arguments);
  }

  // What it prints on standard output, without the name of the directory.
  std::string text(std::vector<std::string> words) const {
    std::string text = run(std::move(words)).text;
    const std::string place = directory.path() + "/";
    for (std::size_t at = text.find(place); at != text.npos; at = text.find(place)) {
      text.erase(at, place.size());
    }
    return text;
  }

  TemporaryDirectory directory;
};

}  // namespace Cradle::Testing
