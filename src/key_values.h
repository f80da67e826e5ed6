// SPDX-License-Identifier: MIT
// The values of one key, oldest first.
//
// Owned by the configuration store, where a list without values stands for a key that was removed.
// Most keys have a single value, which is held without memory of its own. Nothing here fails.
#pragma once

#include <span>
#include <utility>
#include <variant>
#include <vector>

#include "config_value.h"

namespace Cradle::Parser {

class KeyValues {
 public:
  bool empty() const { return std::holds_alternative<std::monostate>(values_); }

  // Adds a value behind the earlier ones, or in their place.
  void append(ConfigValue&& value);
  void replace(ConfigValue&& value) { values_.emplace<ConfigValue>(std::move(value)); }

  void clear() { values_.emplace<std::monostate>(); }

  // Valid until the list changes.
  std::span<const ConfigValue> all() const;

 private:
  using Several = std::vector<ConfigValue>;

  std::variant<std::monostate, ConfigValue, Several> values_;
};

}  // namespace Cradle::Parser
