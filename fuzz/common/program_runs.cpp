// SPDX-License-Identifier: MIT
#include "common/program_runs.h"

#include "common/check.h"
#include "common/lines.h"
#include "common/padding.h"
#include "generators/generated_config.h"
#include "generators/lxc_config.h"
#include "generators/property_file.h"
#include "main/command_line.h"
#include "support/log_capture.h"

namespace Cradle::Fuzz {
namespace {

using CommandLine::Settings;
using Generator = decltype(Generators::generateConfig);
using Strings = std::vector<std::string>;

Output run(Generator generator, const std::string& path, const PrivateHost& host,
           const Settings& settings, const Strings& directories, Outputs& outputs) {
  const Testing::LogCapture log;
  const PrivateHost::Visit visit(host);
  Output output;
  output.status =
      generator(path, directories, settings.userId, settings.instance, settings.baseUid);
  output.text = host.read(path);
  output.log = log.text();
  outputs.byChance = outputs.byChance || visit.isExhausted();
  require(output.status == 0 || output.log.find("ERROR: ") != std::string::npos,
          "a run that fails says why");
  require(output.status != 0 || output.text, "a run that succeeds writes its file");
  return output;
}

}  // namespace

std::optional<Settings> settingsOf(const FileTree& files) {
  const auto file = files.find("arguments");
  Strings words = linesOf(file == files.end() ? "--user-id\n1000" : file->second);
  words.insert(words.begin(), "cradle-generate-config");
  words.push_back("output");
  std::vector<const char*> arguments;
  for (const std::string& word : words) {
    arguments.push_back(word.c_str());
  }
  Settings settings;
  CommandLine::Complaint complaint;
  return CommandLine::parse(arguments, settings, complaint) ? std::optional(settings)
                                                            : std::nullopt;
}

std::string unrelatedDirectory() {
  return "/" + std::string(kUnrelatedGroup);
}

std::string generatedDirectory() {
  return "/" + std::string(kUnrelatedGroup) + "generated";
}

FileTree hostFiles(FileTree files, const std::string& input, const std::string& generated) {
  const std::string entries = unrelatedEntries(choiceFrom(input) % 64);
  std::string removals;
  for (const std::string& line : linesOf(entries)) {
    removals += line.substr(0, line.find('=') + 1) + (line[0] == '[' ? line : "") + "\n";
  }
  files.erase("arguments");
  files[unrelatedDirectory().substr(1) + "/a.conf"] = entries;
  files[unrelatedDirectory().substr(1) + "/b.conf"] = removals;
  files[generatedDirectory().substr(1) + "/generated.conf"] = generated;
  return files;
}

std::string Output::shown() const {
  return std::to_string(status) + (text ? inQuotes(*text) : " no file ") + log;
}

Outputs allOutputs(const PrivateHost& host, const FileTree& files, const Settings& settings,
                   const Strings& directories) {
  host.furnish(files);
  Outputs outputs;
  const auto make = [&](Generator generator, const std::string& path) {
    return run(generator, path, host, settings, directories, outputs);
  };
  outputs.config = make(Generators::generateConfig, "/config");
  outputs.lxc = make(Generators::generateLxc, "/lxc");
  outputs.property = make(Generators::generateProperties, "/property");
  return outputs;
}

}  // namespace Cradle::Fuzz
