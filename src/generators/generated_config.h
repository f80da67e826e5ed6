// SPDX-License-Identifier: MIT
// The generated configuration: all directories merged into one flat file, and the facts of the run.
//
// The first of the three outputs. Its file holds text with all templates and references expanded:
// every group and key in ascending byte order, in group "Config", if it has an entry, behind what
// the mount hooks print; and a last group "GeneratedConfig" with the user, the instance and what
// property hooks and static fragments contribute. The other two runs read it back as configuration,
// so a value's ";" separates there, and its "$" begins a template.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace Cradle::Generators {

// Writes `output`. Returns 0, or 1 with an error logged and no file written when there is no user
// or no valid configuration. A `userId` of all ones is detected (see seat_user.h). Once the file
// has been opened nothing fails the run, an unwritable file included.
int generateConfig(const std::string& output, const std::vector<std::string>& directories,
                   std::uint32_t userId, const std::string& instance, std::uint32_t baseUid);

}  // namespace Cradle::Generators
