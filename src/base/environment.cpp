// SPDX-License-Identifier: MIT
#include "base/environment.h"

#include <cstdlib>

namespace Cradle {

std::string getEnvironment(const std::string& name, const std::string& fallback) {
  const char* const value = std::getenv(name.c_str());
  return value == nullptr ? fallback : value;
}

}  // namespace Cradle
