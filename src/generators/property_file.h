// SPDX-License-Identifier: MIT
// The Android property file, which the guest reads at boot.
//
// A file of "property=value" lines: the property hooks of every directory, the rows of one table,
// and static fragments; or in their place what a generated configuration keeps of them.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace Cradle::Generators {

// Writes `output`. Returns 0, or 1 with an error logged: with no file written when there is no user
// or no valid configuration, with the lines so far when a value is wrong.
int generateProperties(const std::string& output, const std::vector<std::string>& directories,
                       std::uint32_t userId, const std::string& instance, std::uint32_t baseUid);

}  // namespace Cradle::Generators
