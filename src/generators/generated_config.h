// The generated configuration: all directories merged into one flat file, and the facts of the run.
//
// The first of the three outputs. Its file holds plain text without templates or references, every
// group and key in ascending byte order, and a last group "GeneratedConfig" with the user, the
// instance and what hooks and static fragments contributed, which the other two runs read back.
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
