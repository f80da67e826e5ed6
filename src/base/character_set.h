// SPDX-License-Identifier: MIT
// A set of bytes that is made at compile time and asked in constant time.
//
// Names in configuration files and logger identities are checked against such sets, the former for
// every line read.
#pragma once

#include <algorithm>
#include <array>
#include <string_view>

namespace Cradle {

class CharacterSet {
 public:
  constexpr explicit CharacterSet(std::string_view characters) {
    for (const char character : characters) {
      members_[index(character)] = true;
    }
  }

  constexpr bool contains(char character) const { return members_[index(character)]; }

  // How many characters at the beginning of `text` are in the set.
  constexpr std::size_t prefixLength(std::string_view text) const {
    const char* const end = text.data() + text.size();
    return static_cast<std::size_t>(
        std::find_if_not(text.data(), end, [this](char c) { return contains(c); }) - text.data());
  }

  // Whether every character of `text` is in the set. The empty text passes.
  constexpr bool containsAll(std::string_view text) const {
    return prefixLength(text) == text.size();
  }

 private:
  static constexpr std::size_t index(char character) {
    return static_cast<unsigned char>(character);
  }

  std::array<bool, 256> members_{};
};

}  // namespace Cradle
