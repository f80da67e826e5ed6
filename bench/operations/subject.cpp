// SPDX-License-Identifier: MIT
#include "operations/subject.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <random>

#include "common/entry_stream.h"
#include "common/failure.h"

namespace Cradle::Bench {
namespace {

std::string line(std::string_view key, std::string_view text) {
  return std::string(key).append("=").append(text);
}

template <typename Value>
std::string line(const SpecialKey<Value>& special) {
  return line(special.key, special.text);
}

std::string referringLine(std::string_view key, const std::string& group, std::string_view target) {
  return line(key, ("${config:" + group + '/').append(target) + '}');
}

std::string linkKey(std::size_t number) {
  return std::string(kLink) + std::to_string(number);
}

// The special keys of a group, as lines.
std::vector<std::string> specialLines(const std::string& group) {
  std::vector<std::string> lines{line(kText),  line(kFlag),  line(kNumber),
                                 line(kLarge), line(kRatio), line(kList)};
  lines.push_back(referringLine(kReference.key, group, kText.key));
  for (std::size_t i = 0; i < kReferenceChain; ++i) {
    lines.push_back(referringLine(linkKey(i), group, linkKey(i + 1)));
  }
  lines.push_back(line(linkKey(kReferenceChain), kFirstLink.text));
  return lines;
}

std::vector<std::string> shuffledGroups(std::size_t count) {
  std::vector<std::string> groups;
  for (std::size_t i = 0; i < count; ++i) {
    groups.push_back(groupName(i));
  }
  std::shuffle(groups.begin(), groups.end(), std::mt19937_64());
  groups.resize(std::min(count, kRoundSize));
  return groups;
}

}  // namespace

Subject::Subject(std::size_t keys) : groups_(shuffledGroups(keys / kKeysPerGroup)) {
  const std::string path = directory_.path("subject.conf");
  writeConfiguration(path, keys);
  setenv("CRADLE_BENCH", kStoredValue, 1);
  parser_.addTemplate("BENCH", kStoredValue);
  require(parser_.loadFile(path), "ConfigParser failed");
}

void Subject::writeConfiguration(const std::string& path, std::size_t keys) const {
  std::ofstream file(path, std::ios::binary);
  EntryStream ordinary;
  for (std::size_t i = 0; i < keys; i += kKeysPerGroup) {
    const std::string group = groupName(i / kKeysPerGroup);
    const std::vector<std::string> special = specialLines(group);
    file << '[' << group << "]\n";
    for (const std::string& line : special) {
      file << line << '\n';
    }
    for (std::size_t key = special.size(); key < kKeysPerGroup; ++key) {
      const Entry& entry = ordinary.next();
      file << entry.key << '=' << entry.value << '\n';
    }
  }
  require(file.flush().good(), "cannot write " + path);
}

std::string Subject::storeFile(const std::string& value) const {
  std::string text;
  for (std::size_t i = 0; i < kRoundSize; ++i) {
    text += '[' + groups_[i % groups_.size()] + "]\n";
    text += line(kStoredKey, "") + '\n' + line(kStoredKey, value) + '\n';
  }
  const std::string name = std::to_string(std::hash<std::string>()(value)) + ".conf";
  return directory_.write(name, text);
}

}  // namespace Cradle::Bench
