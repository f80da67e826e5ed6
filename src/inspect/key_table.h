// SPDX-License-Identifier: MIT
// The keys that the programs know, for looking them up.
//
// A key that no output reads may still be there for others to refer to; it is not known.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "generators/key_reference.h"

namespace Cradle::Inspect {

// The reference of a key, or null.
const Generators::KeyReference* findKey(std::string_view group, std::string_view key);

// Every known key, in the order of the manual.
const std::vector<Generators::KeyReference>& knownKeys();

// The words that a key allows, with `separator` between them.
std::string wordsOf(const Generators::KeyReference& key, std::string_view separator);

// Whether the last value alone counts.
bool takesOne(const Generators::KeyReference& key);

// The same for a key of that name; all values of an unknown key count.
bool takesOne(std::string_view group, std::string_view key);

// A key as the command line writes it, "GROUP/KEY" or "GROUP" alone. Where the group is a refused
// line, which may hold slashes, the key is what comes after the last one, or nothing.
struct KeyPattern {
  explicit KeyPattern(std::string_view text);

  bool matches(std::string_view groupName, std::string_view keyName) const {
    return groupName == whole || (groupName == group && (key.empty() || key == keyName));
  }

  std::string whole;
  std::string group;
  std::string key;  // empty for all of the group
};

}  // namespace Cradle::Inspect
