// SPDX-License-Identifier: MIT
#include "key_values.h"

namespace Cradle::Parser {

void KeyValues::append(ConfigValue&& value) {
  if (empty()) {
    replace(std::move(value));
    return;
  }
  if (auto* const only = std::get_if<ConfigValue>(&values_)) {
    Several several;
    several.push_back(std::move(*only));
    values_ = std::move(several);
  }
  std::get<Several>(values_).push_back(std::move(value));
}

std::span<const ConfigValue> KeyValues::all() const {
  if (const auto* const several = std::get_if<Several>(&values_)) {
    return *several;
  }
  const auto* const only = std::get_if<ConfigValue>(&values_);
  return {only, only == nullptr ? 0U : 1U};
}

}  // namespace Cradle::Parser
