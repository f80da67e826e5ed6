// SPDX-License-Identifier: MIT
// What the inspecting program looks at, with configuration files that are written in the test
// itself.
#pragma once

#include <initializer_list>
#include <span>
#include <string>
#include <string_view>

#include "inspect/findings.h"
#include "inspect/inspection.h"
#include "main/command_line.h"
#include "support/log_capture.h"
#include "support/temporary_directory.h"
#include "support/users.h"

namespace Cradle::Testing {

struct BenchFile {
  std::string_view name;
  std::string_view text;
};

class InspectionBench {
 public:
  using OutputType = CommandLine::OutputType;

  // Writes the files and looks at their directory for the user who runs the tests.
  explicit InspectionBench(std::initializer_list<BenchFile> files,
                           OutputType type = OutputType::Config)
      : InspectionBench(std::span(files.begin(), files.size()), type) {}

  explicit InspectionBench(std::span<const BenchFile> files, OutputType type = OutputType::Config) {
    for (const BenchFile& file : files) {
      directory.write(file.name, file.text);
    }
    settings.directories = {directory.path()};
    settings.userId = thisUser().uid;
    settings.type = type;
    CommandLine::applyDefaults(settings);
    lookAgain();
  }

  void lookAgain(bool execute = false) {
    const LogCapture log(LogCapture::Level::LogCritical);
    inspection = Inspect::inspect(settings, execute);
  }

  // What a check finds, "FILE:LINE kind sentence" each, with file names in the directory.
  std::string found(void (*check)(const Inspect::Inspection&, Inspect::Findings&)) const {
    const LogCapture log(LogCapture::Level::LogCritical);
    Inspect::Findings findings(inspection.journal);
    check(inspection, findings);
    std::string text;
    for (const Inspect::Finding& finding : findings.take()) {
      text += finding.path + ":" + std::to_string(finding.line) + " ";
      text.append(finding.kind->name).append(" ").append(finding.sentence).append("\n");
    }
    return inner(text);
  }

  // The text without the name of the directory.
  std::string inner(std::string text) const {
    const std::string place = directory.path() + "/";
    for (std::size_t at = text.find(place); at != text.npos; at = text.find(place)) {
      text.erase(at, place.size());
    }
    return text;
  }

  TemporaryDirectory directory;
  CommandLine::Settings settings;
  Inspect::Inspection inspection;
};

}  // namespace Cradle::Testing
