// SPDX-License-Identifier: MIT
// ConfigParser's loading: files into entries, entries into values, directories into layers.

#include <string>
#include <utility>

#include "assigned_parts.h"
#include "config_file_iterator.h"
#include "config_files.h"
#include "config_parser_implementation.h"
#include "glob_paths.h"
#include "library_logger.h"
#include "template_scanner.h"

namespace Cradle::Parser {
namespace {

std::string withTrailingSlash(std::string directory) {
  if (!directory.ends_with('/')) {
    directory += '/';
  }
  return directory;
}

}  // namespace

std::vector<std::string> configFiles(const std::string& directory) {
  return sortedGlobPaths(withTrailingSlash(directory).append(kConfigFilePattern));
}

void ConfigParser::storeEntry(std::string_view group, std::string_view key,
                              std::string_view rawValue) {
  Implementation& self = *implementation_;
  std::uint32_t mode = ValueList;
  if (!self.knownKeys.empty()) {
    const auto known = self.knownKeys.mode(group, key);
    if (!known) {
      return;
    }
    mode = *known;
  }
  const auto clear = [&] { self.store.remove(group, key); };
  forEachAssignedPart(rawValue, clear, [&](std::string_view part) {
    ConfigValue value;
    if (!expand(self.templates, part, value)) {
      return;
    }
    if (mode == SingleValue) {
      self.store.replace(group, key, std::move(value));
    } else if (mode == ValueList && !value.isEmpty()) {
      self.store.append(group, key, std::move(value));
    }
  });
}

bool ConfigParser::loadFile(const std::string& path) {
  ConfigFileInfo info(path);
  const ConfigFileIterator end(info, true);
  for (ConfigFileIterator entry(info, false); !(entry == end) && !info.failed; ++entry) {
    storeEntry(entry.group(), entry.key(), entry.value());
  }
  if (info.failed) {
    libraryLogger().error() << "Failed to load config from '" << path << "'";
  }
  return !info.failed;
}

bool ConfigParser::loadDirectory(const std::string& directory) {
  const std::vector<std::string> files = configFiles(directory);
  if (files.empty()) {
    libraryLogger().error() << "No configuration to read in " << withTrailingSlash(directory);
    return false;
  }
  bool loaded = true;
  for (const std::string& file : files) {
    loaded = loadFile(file) && loaded;
  }
  return loaded;
}

LoadResult ConfigParser::loadDirectories(const std::vector<std::string>& directories) {
  LoadResult result = LoadResult::NothingToLoad;
  for (const std::string& directory : directories) {
    for (const std::string& file : configFiles(directory)) {
      if (!loadFile(file)) {
        libraryLogger().error() << "Invalid configuration in " << file;
        return LoadResult::InvalidConfiguration;
      }
      result = LoadResult::Loaded;
    }
  }
  return result;
}

}  // namespace Cradle::Parser
