// SPDX-License-Identifier: MIT
// The LXC container configuration.
//
// A file of "key = value" lines: the rows of one table, then what the mount hooks and static
// fragments of every directory contribute, then the fragments that a generated configuration keeps.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace Cradle::Generators {

// Writes `output`. Returns 0, or 1 with an error logged: with no file written when there is no user
// or no valid configuration, with the lines so far when a required device is missing or a
// configured mount entry invalid. Makes the crash-log directory where crash logging is enabled.
int generateLxc(const std::string& output, const std::vector<std::string>& directories,
                std::uint32_t userId, const std::string& instance, std::uint32_t baseUid);

}  // namespace Cradle::Generators
