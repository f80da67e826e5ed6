// SPDX-License-Identifier: MIT
// The question whether something else was meant, as it stands behind what is not known: a blank and
// "(did you mean NAME?)", or nothing.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace Cradle::Inspect {

// Whether one of the names was meant.
std::string question(std::string_view name, std::span<const std::string_view> candidates);

// Whether a known group, or a known key of this or of another group, was meant.
std::string questionForGroup(std::string_view group);
std::string questionForKey(std::string_view group, std::string_view key);

bool isKnownGroup(std::string_view group);

}  // namespace Cradle::Inspect
