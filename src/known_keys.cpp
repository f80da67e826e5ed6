// SPDX-License-Identifier: MIT
#include "known_keys.h"

#include <functional>

namespace Cradle::Parser {

std::size_t KnownKeys::Hash::operator()(const NameView& name) const {
  constexpr std::hash<std::string_view> kHash;
  const std::uint64_t group = kHash(name.first);
  const std::uint64_t key = kHash(name.second);
  return group ^ ((group >> 2U) + (group << 6U) + key + 0x9e3779b9U);
}

void KnownKeys::add(std::string_view group, std::string_view key, std::uint32_t mode) {
  modes_.try_emplace(ValueName(group, key), mode);
}

std::optional<std::uint32_t> KnownKeys::mode(std::string_view group, std::string_view key) const {
  const auto found = modes_.find(NameView(group, key));
  return found == modes_.end() ? std::nullopt : std::optional(found->second);
}

}  // namespace Cradle::Parser
