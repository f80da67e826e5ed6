// SPDX-License-Identifier: MIT
// The merged configuration in memory: groups of keys, each with its values, oldest first.
//
// A group or key comes to exist when its first value is stored. Removing a key leaves its group.
// Look-ups make no temporary strings. Owned by its ConfigParser.
#pragma once

#include <functional>
#include <memory_resource>
#include <span>
#include <string_view>

#include "base/name_table.h"
#include "config_value.h"
#include "key_values.h"

namespace Cradle::Parser {

class ConfigStore {
 public:
  // Adds a value behind the earlier ones of the key, or in their place.
  void append(std::string_view group, std::string_view key, ConfigValue&& value);
  void replace(std::string_view group, std::string_view key, ConfigValue&& value);

  // Drops a key with all its values, if it is there.
  void remove(std::string_view group, std::string_view key);

  bool hasGroup(std::string_view group) const { return groups_.find(group) != nullptr; }

  // The values of a key, none where it does not exist. Valid until the key changes.
  std::span<const ConfigValue> find(std::string_view group, std::string_view key) const;

  // Calls `visit` for every key, groups in ascending byte order and the keys of each likewise.
  using Visitor = std::function<void(std::string_view group, std::string_view key,
                                     std::span<const ConfigValue> values)>;
  void visitInOrder(const Visitor& visit) const;

 private:
  using Keys = NameTable<KeyValues>;  // an empty list stands for a removed key
  using Groups = NameTable<Keys>;

  KeyValues& valuesOf(std::string_view group, std::string_view key);

  std::pmr::monotonic_buffer_resource names_;
  Groups groups_;
  Groups::Entry* lastGroup_ = nullptr;  // that a value was stored in
};

}  // namespace Cradle::Parser
