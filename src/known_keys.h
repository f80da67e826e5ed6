// SPDX-License-Identifier: MIT
// The optional table of declared keys, each with the mode in which files assign it.
//
// A parser without declared keys takes every key as a list; once there is one, only declared keys
// are taken from files.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "config_value.h"
#include "value_mode.h"

namespace Cradle::Parser {

class KnownKeys {
 public:
  bool empty() const { return modes_.empty(); }

  // The first mode given for a key stays.
  void add(std::string_view group, std::string_view key, std::uint32_t mode);

  // The mode of a declared key, or nothing.
  std::optional<std::uint32_t> mode(std::string_view group, std::string_view key) const;

 private:
  using NameView = std::pair<std::string_view, std::string_view>;

  // Both take names and views of names, so that a look-up makes no strings.
  struct Hash {
    using is_transparent = void;
    std::size_t operator()(const NameView& name) const;
  };
  struct Equal {
    using is_transparent = void;
    bool operator()(const NameView& left, const NameView& right) const { return left == right; }
  };

  std::unordered_map<ValueName, std::uint32_t, Hash, Equal> modes_;
};

}  // namespace Cradle::Parser
