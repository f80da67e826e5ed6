// SPDX-License-Identifier: MIT
// What the program says about itself.
#pragma once

#include <string>

namespace Cradle::Inspect {

inline constexpr const char* kProgram = "cradle-inspect-config";

std::string helpText();
std::string versionText();

}  // namespace Cradle::Inspect
