// SPDX-License-Identifier: MIT
// The golden cases of the end-to-end tests, as the tests of the output tables look at them: the
// configuration of each case and what it expects of an output.
//
// Cases in which one run reads what another has written are left out: their configuration comes to
// exist only while they run.
#pragma once

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "base/text.h"
#include "generators/config_reader.h"
#include "support/log_capture.h"

namespace Cradle::Testing {

struct GoldenCase {
  std::string name;
  std::unique_ptr<Parser::ConfigParser> parser;
  std::vector<std::string> lines;  // of the expected file
  std::string complaint;           // of the run
  bool succeeds;                   // the run ends with status 0

  Generators::ConfigReader config() const { return Generators::ConfigReader(*parser); }
};

inline std::string readGolden(const std::filesystem::path& file) {
  std::ostringstream text;
  text << std::ifstream(file, std::ios::binary).rdbuf();
  return text.str();
}

inline std::vector<std::string> goldenDirectories(const std::filesystem::path& root) {
  std::istringstream words(readGolden(root / "arguments"));
  std::vector<std::string> directories;
  for (std::string word; words >> word;) {
    if (word == "--config" && words >> word) {
      directories.push_back(root / "host" / word.substr(1));
    }
  }
  if (directories.empty()) {
    directories.push_back(root / "host/etc/cradle.conf.d");
  }
  return directories;
}

// Every case that expects a file of `type` ("lxc" or "property"), by name.
inline std::vector<GoldenCase> goldenCases(const std::string& type) {
  std::vector<GoldenCase> cases;
  for (const auto& entry : std::filesystem::directory_iterator(GOLDEN_DIRECTORY)) {
    const std::filesystem::path& root = entry.path();
    if (!exists(root / type) || exists(root / "config.path")) {
      continue;
    }
    const LogCapture log;
    auto parser = std::make_unique<Parser::ConfigParser>(-1);
    // The rows are looked for where values hold no named template; these need only be there.
    for (const char* const name : {"HOME", "INSTANCE", "USER", "USER_ID"}) {
      parser->addTemplate(name, name);
    }
    if (parser->loadDirectories(goldenDirectories(root)) != Parser::LoadResult::Loaded) {
      throw std::runtime_error("the configuration of " + root.string() + " is not valid");
    }
    const std::string text = readGolden(root / type);
    const auto lines = split(text, '\n', EmptyParts::DropTrailing);
    cases.push_back({root.filename(),
                     std::move(parser),
                     {lines.begin(), lines.end()},
                     readGolden(root / (type + ".stderr")),
                     !exists(root / (type + ".status"))});
  }
  std::sort(cases.begin(), cases.end(),
            [](const GoldenCase& left, const GoldenCase& right) { return left.name < right.name; });
  return cases;
}

}  // namespace Cradle::Testing
