// SPDX-License-Identifier: MIT
// Canonical paths as a value source.
#pragma once

#include <string>

namespace Cradle::Parser {

// The canonical absolute path of `path`, which must exist, or the empty text (realpath).
std::string resolvePath(const std::string& path);

}  // namespace Cradle::Parser
