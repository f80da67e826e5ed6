// SPDX-License-Identifier: MIT
// The whole program, from a tree of files to each of its three outputs, in a private host. The
// input is the files of the host, as in common/file_tree.h; "arguments" holds the options of the
// command line, one word in each line, by default those for the user alice.
//
// Properties: a run that fails says why; a generated configuration holds what plain means put
// together, and what is read back from it equals what was written, but for the texts that
// common/generated_text.h names; the other two outputs are the same whether they are made from it
// or from its sources; what else the configuration holds, and where, makes no difference.

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "common/check.h"
#include "common/generated_text.h"
#include "common/lines.h"
#include "common/memory_file.h"
#include "common/padding.h"
#include "common/private_host.h"
#include "common/program_runs.h"
#include "common/target.h"
#include "generators/generated_group.h"
#include "generators/property_rows.h"
#include "support/log_capture.h"

namespace Cradle::Fuzz {
namespace {

using CommandLine::Settings;
using Generators::RunFacts;
using Parser::ConfigParser;
using Parser::LoadResult;
using Strings = std::vector<std::string>;

// The directories as they are loaded for the first output.
struct Sources {
  Sources(const PrivateHost& host, const Settings& settings)
      : parser(static_cast<std::int32_t>(settings.userId)) {
    const HostUser* const user = PrivateHost::findUser(settings.userId);
    if (user == nullptr) {
      return;
    }
    facts = {settings.userId, user->name, user->home, settings.instance, settings.baseUid};
    const Testing::LogCapture log;
    const PrivateHost::Visit visit(host);
    Generators::addNamedTemplates(parser, facts, true);
    result = parser.loadDirectories(settings.directories);
  }

  ConfigParser parser;
  RunFacts facts;
  LoadResult result = LoadResult::InvalidConfiguration;
};

// Whether the text of each entry stands for itself when it is read back, and the runs draw on
// nothing but entries: then it makes no difference which of the two are read.
bool arePlain(const Sources& sources, const std::vector<GeneratedEntry>& entries,
              const ConfigParser& again, const FileTree& files) {
  bool plain = !sources.parser.hasGroup(Generators::GeneratedGroup::kName);
  for (const GeneratedEntry& entry : entries) {
    plain = plain && (entry.key.empty() || !entry.value.empty()) &&
            entry.value.find('$') == std::string::npos;
  }
  sources.parser.forEachEntry([&](std::string_view group, std::string_view key,
                                  std::span<const Parser::ConfigValue> values) {
    Strings texts;
    if (again.hasValue(group, key)) {
      again.getValue(group, key, texts);
    }
    plain = plain && texts.size() == values.size();  // none was empty or held ";"
  });
  for (const Generators::OutputRow& row : Generators::propertyRows()) {
    plain = plain && sources.parser.hasGroup(row.source.group) == again.hasGroup(row.source.group);
  }
  for (const auto& [name, text] : files) {
    // Hooks and fragments are part of a generated configuration, and written in other places.
    // Only one of the two outputs knows the template "ODM_DIR".
    plain = plain && !name.ends_with(".sh") && !name.ends_with(".lxc") && !name.ends_with(".ro") &&
            text.find("ODM_DIR") == std::string::npos;
  }
  return plain;
}

// Without the comments about hooks, which stand for none.
std::string withoutHookComments(const Output& output) {
  Output rest = output;
  rest.log = "";
  rest.text = "";
  for (const std::string& line : linesOf(output.text.value_or(""))) {
    *rest.text += line.ends_with("-hooks") ? "" : line + "\n";
  }
  return rest.shown();
}

bool isUsualPath(const std::string& path) {
  return path.starts_with('/') && isUsualName(path.substr(1));
}

// Whether files are what they seem to be: a directory that is named like a hook or a fragment is
// found as one, and a hook with a NUL does not print all of its text.
bool areOrdinary(const FileTree& files, const Settings& settings) {
  return std::all_of(settings.directories.begin(), settings.directories.end(), isUsualPath) &&
         std::all_of(files.begin(), files.end(), [](const auto& file) {
           const std::string& name = file.first;
           return name.find(".sh/") == std::string::npos &&
                  name.find(".lxc/") == std::string::npos &&
                  name.find(".ro/") == std::string::npos &&
                  (!name.ends_with(".sh") || file.second.find('\0') == std::string::npos);
         });
}

class Check {
 public:
  explicit Check(const std::string& input, const FileTree& files, const Settings& settings)
      : files_(files), hostFiles_(hostFiles(files, input)), input_(input), settings_(settings) {}

  void run() {
    const Outputs outputs = outputsOf(hostFiles_, settings_.directories);
    host().furnish(hostFiles_);
    const Sources sources(host(), settings_);
    if (outputs.byChance) {
      return;
    }
    if (sources.result != LoadResult::NothingToLoad) {
      checkIndependence(outputs);
    }
    require((outputs.config.status == 0) == (sources.result == LoadResult::Loaded),
            "a generated configuration is written where there is one to read");
    if (outputs.config.status == 0 && areOrdinary(files_, settings_)) {
      checkGenerated(outputs, sources);
    }
  }

 private:
  static const PrivateHost& host() {
    static const PrivateHost host;
    return host;
  }

  Outputs outputsOf(const FileTree& files, const Strings& directories) const {
    return allOutputs(host(), files, settings_, directories);
  }

  void checkIndependence(const Outputs& outputs) const {
    Strings directories = settings_.directories;
    directories.insert(directories.begin(), unrelatedDirectory());
    const Outputs again = outputsOf(hostFiles_, directories);
    if (again.byChance) {
      return;
    }
    constexpr const char* kProperty = "unrelated entries make no difference";
    requireEqual(again.config.shown(), outputs.config.shown(), kProperty);
    requireEqual(again.lxc.shown(), outputs.lxc.shown(), kProperty);
    requireEqual(again.property.shown(), outputs.property.shown(), kProperty);
  }

  void checkGenerated(const Outputs& outputs, const Sources& sources) const {
    const Testing::LogCapture log;
    const std::vector<GeneratedEntry> entries =
        generatedEntries(sources.parser, files_, settings_.directories, sources.facts);
    requireEqual(*outputs.config.text, generatedText(entries),
                 "a generated configuration holds every entry with its final text");
    if (std::any_of(entries.begin(), entries.end(), [](const GeneratedEntry& entry) {
          return entry.value.find('\n') != std::string::npos;
        })) {
      return;
    }
    static const MemoryFile file;
    file.write(*outputs.config.text);
    ConfigParser again(-1);
    require(again.loadFile(file.path()), "a generated configuration is read back");
    requireEqual(readBack(again, entries), readBackByHand(entries),
                 "what is read back equals what was written");
    if (arePlain(sources, entries, again, files_)) {
      checkOtherOutputs(*outputs.config.text);
    }
  }

  void checkOtherOutputs(const std::string& generated) const {
    const FileTree files = hostFiles(files_, input_, generated);
    const Outputs direct = outputsOf(files, settings_.directories);
    Settings others = settings_;  // than those of the stored facts, which count
    others.userId = 0;
    others.instance = "other";
    others.baseUid = settings_.baseUid + 1;
    const Outputs indirect = allOutputs(host(), files, others, {generatedDirectory()});
    if (direct.byChance || indirect.byChance) {
      return;
    }
    constexpr const char* kProperty =
        "an output made from the generated configuration is that made from its sources";
    requireEqual(withoutHookComments(indirect.lxc), withoutHookComments(direct.lxc), kProperty);
    requireEqual(withoutHookComments(indirect.property), withoutHookComments(direct.property),
                 kProperty);
  }

  const FileTree& files_;
  const FileTree hostFiles_;
  const std::string& input_;
  const Settings& settings_;
};

}  // namespace

void checkInput(const std::string& input) {
  const FileTree files = filesOf(input);
  const std::optional<Settings> settings = settingsOf(files);
  if (settings && input.find(kUnrelatedGroup) == std::string::npos) {
    Check(input, files, *settings).run();
  }
}

}  // namespace Cradle::Fuzz
