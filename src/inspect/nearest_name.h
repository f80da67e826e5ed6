// SPDX-License-Identifier: MIT
// The name that somebody may have meant.
#pragma once

#include <span>
#include <string_view>

namespace Cradle::Inspect {

// The candidate with the fewest wrong, missing, added and exchanged letters, case apart; the first
// one of several. Empty where even that one is not near.
std::string_view nearestName(std::string_view name, std::span<const std::string_view> candidates);

}  // namespace Cradle::Inspect
