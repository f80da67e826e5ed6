// SPDX-License-Identifier: MIT
// What an assignment in a configuration file says: that its key is cleared, or values to add.
//
// Shared by whoever reads assignments, so that all of them mean the same.
#pragma once

#include <string_view>

#include "base/text.h"

namespace Cradle::Parser {

inline constexpr char kPartSeparator = ';';

// Calls `clear` for the empty value, otherwise `add` with each part of it that is not empty, in
// order. The parts are raw: templates in them are yet to be expanded.
template <typename Clear, typename Add>
void forEachAssignedPart(std::string_view rawValue, const Clear& clear, const Add& add) {
  if (rawValue.empty()) {
    clear();
    return;
  }
  forEachPart(rawValue, kPartSeparator, [&](std::string_view part) {
    if (!part.empty()) {
      add(part);
    }
  });
}

}  // namespace Cradle::Parser
