// SPDX-License-Identifier: MIT
#include "inspect/key_table.h"

#include <algorithm>
#include <utility>

#include "base/text.h"
#include "generators/value_kind.h"
#include "inspect/journal.h"

namespace Cradle::Inspect {

using Generators::KeyReference;

namespace {

std::pair<std::string_view, std::string_view> nameOf(const KeyReference* key) {
  return {key->name.group, key->name.key};
}

// They are asked for with every line.
std::vector<const KeyReference*> sortedKeys() {
  std::vector<const KeyReference*> keys;
  for (const KeyReference& key : knownKeys()) {
    keys.push_back(&key);
  }
  std::ranges::sort(keys, {}, nameOf);
  return keys;
}

}  // namespace

const std::vector<KeyReference>& knownKeys() {
  static const std::vector<KeyReference> keys = Generators::keyReference();
  return keys;
}

const KeyReference* findKey(std::string_view group, std::string_view key) {
  static const std::vector<const KeyReference*> keys = sortedKeys();
  const auto known = std::ranges::lower_bound(keys, std::pair(group, key), {}, nameOf);
  return known != keys.end() && nameOf(*known) == std::pair(group, key) ? *known : nullptr;
}

std::string wordsOf(const KeyReference& key, std::string_view separator) {
  const std::vector<std::string> words(key.words.begin(), key.words.end());
  return join(words, separator);
}

bool takesOne(const KeyReference& key) {
  return !Generators::valueKindRow(key.kind).isList;
}

bool takesOne(std::string_view group, std::string_view key) {
  const KeyReference* const known = findKey(group, key);
  return known != nullptr && takesOne(*known);
}

KeyPattern::KeyPattern(std::string_view text) : whole(text) {
  const std::size_t slash = isRefusedLine(text) ? text.rfind('/') : text.find('/');
  group = text.substr(0, slash);
  key = slash == text.npos ? "" : text.substr(slash + 1);
}

}  // namespace Cradle::Inspect
