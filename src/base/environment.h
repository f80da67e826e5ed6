// SPDX-License-Identifier: MIT
// The process environment.
#pragma once

#include <string>

namespace Cradle {

// The value of the variable `name` if it is set, even if empty, else `fallback` (getenv).
std::string getEnvironment(const std::string& name, const std::string& fallback);

}  // namespace Cradle
