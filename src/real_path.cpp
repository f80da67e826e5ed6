// SPDX-License-Identifier: MIT
#include "real_path.h"

#include <cstdlib>
#include <memory>

namespace Cradle::Parser {

std::string resolvePath(const std::string& path) {
  const std::unique_ptr<char, decltype(&std::free)> resolved(realpath(path.c_str(), nullptr),
                                                             &std::free);
  return resolved ? resolved.get() : "";
}

}  // namespace Cradle::Parser
