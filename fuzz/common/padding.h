// SPDX-License-Identifier: MIT
// Entries that have nothing to do with an input, to be loaded before it.
//
// They move everything else to another place in memory and in the tables, and make the tables grow
// at other moments. No result may depend on that.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace Cradle::Fuzz {

// The name holds what no other name of an input may hold.
inline constexpr const char* kUnrelatedGroup = "- unrelated -";

inline std::string unrelatedEntries(std::size_t count) {
  std::string text = "[" + std::string(kUnrelatedGroup) + "]\n";
  for (std::size_t i = 0; i < count; ++i) {
    text += "key" + std::to_string(i) + "=" + std::string(i, 'v') + "x\n";
  }
  // As many groups again, which need no more than one key each.
  for (std::size_t i = 0; i < count; ++i) {
    text += "[" + std::string(kUnrelatedGroup) + std::to_string(i) + "]\nkey=x\n";
  }
  return text;
}

inline bool isUnrelated(std::string_view group) {
  return group.starts_with(kUnrelatedGroup);
}

}  // namespace Cradle::Fuzz
