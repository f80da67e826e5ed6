// SPDX-License-Identifier: MIT
// The modes in which configuration files assign a key that has been declared.
#pragma once

#include <cstdint>

namespace Cradle::Parser {

// What a file's assignment does to the earlier values of the key. Any other mode takes no values.
enum ValueMode : std::uint32_t {
  SingleValue = 0,  // replaces them
  ValueList = 1,    // is appended to them
};

}  // namespace Cradle::Parser
