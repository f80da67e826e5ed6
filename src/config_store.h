// The merged configuration in memory: groups of keys, each with its values, oldest first.
//
// A group or key comes to exist when its first value is stored. Removing a key leaves its group.
// Look-ups make no temporary strings. Owned by its ConfigParser.
#pragma once

#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "config_value.h"

namespace Cradle::Parser {

class ConfigStore {
 public:
  using Values = std::vector<ConfigValue>;

  // Adds a value behind the earlier ones of the key, or in their place.
  void append(std::string_view group, std::string_view key, ConfigValue value);
  void replace(std::string_view group, std::string_view key, ConfigValue value);

  // Drops a key with all its values, if it is there.
  void remove(std::string_view group, std::string_view key);

  bool hasGroup(std::string_view group) const { return groups_.contains(group); }

  // The values of a key, at least one, or null. Valid until the key changes.
  const Values* find(std::string_view group, std::string_view key) const;

  // Calls `visit` for every key, groups in ascending byte order and the keys of each likewise.
  using Visitor = std::function<void(std::string_view group, std::string_view key,
                                     std::span<const ConfigValue> values)>;
  void visitInOrder(const Visitor& visit) const;

 private:
  struct Hash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const {
      return std::hash<std::string_view>()(text);
    }
  };
  template <typename Mapped>
  using Table = std::unordered_map<std::string, Mapped, Hash, std::equal_to<>>;

  Values& valuesOf(std::string_view group, std::string_view key);

  Table<Table<Values>> groups_;
};

}  // namespace Cradle::Parser
