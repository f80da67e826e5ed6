// SPDX-License-Identifier: MIT
#include "common/layer_model.h"

#include <cctype>

#include "common/check.h"
#include "common/lines.h"

namespace Cradle::Fuzz {
namespace {

using Parser::LoadResult;

constexpr const char* kKnown = "known";

bool isConfigurationFile(const std::string& name) {
  return name[0] != '.' && name.ends_with(".conf");
}

}  // namespace

std::vector<KnownKey> knownKeysOf(const FileTree& files) {
  std::vector<KnownKey> known;
  const auto file = files.find(kKnown);
  for (const std::string& line : linesOf(file == files.end() ? "" : file->second)) {
    const std::size_t slash = line.find('/');
    if (slash != std::string::npos && std::isdigit(static_cast<unsigned char>(line[0])) != 0) {
      known.push_back({static_cast<unsigned>(line[0] - '0'), line.substr(1, slash - 1),
                       line.substr(slash + 1)});
    }
  }
  return known;
}

LayerModel::LayerModel(const std::vector<KnownKey>& known) {
  for (const KnownKey& key : known) {
    modes_.insert({{key.group, key.key}, key.mode});
  }
}

std::string LayerModel::load(const std::string& path, const std::string& text) {
  std::string complaints;
  for (const ConfigLine& line : configLinesOf(text)) {
    if (line.kind == ConfigLine::Kind::Wrong) {
      complaints += complaintAbout(line, path);
    } else if (complaints.empty()) {
      assign(line.group, line.name, line.value);
    } else {
      break;
    }
  }
  return complaints;
}

std::string LayerModel::shown() const {
  std::string text;
  for (const auto& [name, values] : keys_) {
    text += inQuotes(name.first) + inQuotes(name.second) + "=";
    for (const std::string& value : values) {
      text += inQuotes(value);
    }
    text += "\n";
  }
  return text;
}

void LayerModel::assign(const std::string& group, const std::string& key,
                        const std::string& value) {
  const Name name(group, key);
  const auto mode = modes_.find(name);
  if (!modes_.empty() && mode == modes_.end()) {
    return;
  }
  if (value.empty()) {
    keys_.erase(name);
  }
  for (const std::string& part : linesOf(value, ';')) {
    if (!part.empty() && (modes_.empty() || mode->second <= Parser::ValueList)) {
      groups_.insert(group);
      std::vector<std::string>& values = keys_[name];
      if (!modes_.empty() && mode->second == Parser::SingleValue) {
        values.clear();
      }
      values.push_back(part);
    }
  }
}

// A map of files has them in the order of directories and names already.
ExpectedLoading loadByHand(const FileTree& files, const PrivateDirectory& place,
                           const std::vector<KnownKey>& known) {
  ExpectedLoading expected{.model = LayerModel(known)};
  for (const auto& [name, text] : files) {
    const std::size_t slash = name.find('/');
    if (slash == std::string::npos || !isConfigurationFile(name.substr(slash + 1))) {
      continue;
    }
    const std::string path = place.path(name);
    expected.complaints = expected.model.load(path, text);
    if (!expected.complaints.empty()) {
      expected.result = LoadResult::InvalidConfiguration;
      expected.complaints += "ERROR: Failed to load config from '" + path + "'\n";
      expected.complaints += "ERROR: Invalid configuration in " + path + "\n";
      return expected;
    }
    expected.result = LoadResult::Loaded;
  }
  return expected;
}

}  // namespace Cradle::Fuzz
