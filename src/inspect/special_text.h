// SPDX-License-Identifier: MIT
// Characters that have a meaning in a configuration file: text that holds one changes when it has
// been written into a generated configuration and is read back.
#pragma once

#include <array>
#include <string_view>

namespace Cradle::Inspect {

struct SpecialText {
  char character;
  std::string_view effect;
};

inline constexpr std::array<SpecialText, 3> kSpecialTexts{{
    {';', "';' separates values"},
    {'$', "'$' begins a template"},
    {'\n', "a line feed ends the line"},
}};

// Calls `visit` with what each such character in the text does.
template <typename Visit>
void forEachEffect(std::string_view text, const Visit& visit) {
  for (const SpecialText& special : kSpecialTexts) {
    if (text.find(special.character) != text.npos) {
      visit(special.effect);
    }
  }
}

}  // namespace Cradle::Inspect
