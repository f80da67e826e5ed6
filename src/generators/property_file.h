// The Android property file.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace Cradle::Generators {

// Not written yet: logs an error and returns 1.
int generateProperties(const std::string& output, const std::vector<std::string>& directories,
                       std::uint32_t userId, const std::string& instance, std::uint32_t baseUid);

}  // namespace Cradle::Generators
