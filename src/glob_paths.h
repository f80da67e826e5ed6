// SPDX-License-Identifier: MIT
// Pathname expansion as the loader, the hooks and the device nodes use it.
#pragma once

#include <string>
#include <vector>

namespace Cradle::Parser {

// The paths that match `pattern` (glob), directories with a trailing "/", in no particular order.
// No match and an expansion error both give an empty list.
std::vector<std::string> globPaths(const std::string& pattern);

// The same in ascending byte order.
std::vector<std::string> sortedGlobPaths(const std::string& pattern);

}  // namespace Cradle::Parser
