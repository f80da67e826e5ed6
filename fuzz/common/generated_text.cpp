// SPDX-License-Identifier: MIT
#include "common/generated_text.h"

#include <map>
#include <set>
#include <span>
#include <string_view>
#include <utility>

#include "common/check.h"
#include "common/lines.h"
#include "generators/generated_group.h"
#include "mount_entry.h"
#include "support/log_capture.h"

namespace Cradle::Fuzz {
namespace {

using Parser::ConfigParser;
using Parser::ConfigValue;
namespace Group = Generators::GeneratedGroup;
using Name = std::pair<std::string, std::string>;

// The lines of all files DIRECTORY/PLACE/*SUFFIX, in the order of their names.
std::vector<std::string> linesBelow(const FileTree& files, const std::string& directory,
                                    const std::string& place, const std::string& suffix) {
  std::vector<std::string> lines;
  const std::string prefix = directory.substr(1) + "/" + place + "/";
  for (const auto& [path, text] : files) {
    const std::string name = path.starts_with(prefix) ? path.substr(prefix.size()) : "/";
    if (name.find('/') == std::string::npos && name[0] != '.' && name.ends_with(suffix)) {
      for (const std::string& line : linesOf(text)) {
        lines.push_back(line);
      }
    }
  }
  return lines;
}

bool isMountEntry(const std::string& line) {
  const Testing::LogCapture log;
  return Parser::validateMountEntry(line);
}

std::string joined(const ConfigParser& parser, std::span<const ConfigValue> values) {
  std::string text;
  for (const ConfigValue& value : values) {
    std::string resolved;
    parser.resolve(value, resolved);
    text += (&value == values.data() ? "" : ";") + resolved;
  }
  return text;
}

std::set<Name> templatesOf(const std::vector<GeneratedEntry>& entries) {
  std::set<Name> names;
  for (const GeneratedEntry& entry : entries) {
    if (entry.value.find('$') != std::string::npos) {
      names.insert({entry.group, entry.key});
    }
  }
  return names;
}

}  // namespace

std::vector<GeneratedEntry> generatedEntries(const ConfigParser& parser, const FileTree& files,
                                             const std::vector<std::string>& directories,
                                             const Generators::RunFacts& facts) {
  std::vector<GeneratedEntry> entries;
  bool hooked = false;
  parser.forEachEntry(
      [&](std::string_view group, std::string_view key, std::span<const ConfigValue> values) {
        if (group == "Config" && !std::exchange(hooked, true)) {
          for (const std::string& directory : directories) {
            for (const std::string& line : linesBelow(files, directory, "mount-hooks", ".sh")) {
              if (isMountEntry(line)) {
                entries.push_back({"Config", "Mounts", line});
              }
            }
          }
        }
        entries.push_back({std::string(group), std::string(key), joined(parser, values)});
      });
  const auto add = [&](std::string_view key, const std::string& value) {
    entries.push_back({std::string(Group::kName), std::string(key), value});
  };
  const auto addLines = [&](std::string_view key, const std::vector<std::string>& lines) {
    for (const std::string& line : lines) {
      if (!line.empty()) {
        add(key, line);
      }
    }
  };
  // An entry without a key begins the group anew, behind the merged ones.
  add("", "");
  for (const std::string& directory : directories) {
    addLines(Group::kPropertyPre, linesBelow(files, directory, "property-pre-hooks", ".sh"));
    addLines(Group::kPropertyPost, linesBelow(files, directory, "property-post-hooks", ".sh"));
    addLines(Group::kDefaultLxc, linesBelow(files, directory, "static", ".lxc"));
    addLines(Group::kDefaultRo, linesBelow(files, directory, "static", ".ro"));
  }
  add(Group::kUserId, std::to_string(facts.userId));
  add(Group::kUser, facts.user);
  add(Group::kHome, facts.home);
  add(Group::kInstance, facts.instance);
  add(Group::kBaseUid, std::to_string(facts.baseUid));
  return entries;
}

std::string generatedText(const std::vector<GeneratedEntry>& entries) {
  std::string text = "# This is an automatically generated file, do not edit\n";
  std::string group;
  for (const GeneratedEntry& entry : entries) {
    if (entry.group != group || entry.key.empty()) {
      text += "\n[" + entry.group + "]\n";
      group = entry.group;
    }
    text += entry.key.empty() ? "" : entry.key + "=" + entry.value + "\n";
  }
  return text;
}

std::string readBackByHand(const std::vector<GeneratedEntry>& entries) {
  const std::set<Name> templates = templatesOf(entries);
  std::map<Name, std::vector<std::string>> keys;
  for (const GeneratedEntry& entry : entries) {
    const Name name(entry.group, entry.key);
    if (entry.value.empty()) {
      keys.erase(name);
    }
    for (const std::string& part : linesOf(entry.value, ';')) {
      if (!part.empty() && templates.count(name) == 0) {
        keys[name].push_back(part);
      }
    }
  }
  std::string text;
  for (const auto& [name, values] : keys) {
    text += inQuotes(name.first) + inQuotes(name.second) + "=";
    for (const std::string& value : values) {
      text += inQuotes(value);
    }
    text += "\n";
  }
  return text;
}

std::string readBack(const ConfigParser& parser, const std::vector<GeneratedEntry>& entries) {
  const std::set<Name> templates = templatesOf(entries);
  std::string text;
  parser.forEachEntry(
      [&](std::string_view group, std::string_view key, std::span<const ConfigValue> values) {
        if (templates.count(Name(group, key)) != 0) {
          return;
        }
        text += inQuotes(group) + inQuotes(key) + "=";
        for (const ConfigValue& value : values) {
          text += inQuotes(value.text());
        }
        text += "\n";
      });
  return text;
}

}  // namespace Cradle::Fuzz
