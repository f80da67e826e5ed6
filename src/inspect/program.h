// SPDX-License-Identifier: MIT
// The program but for its surroundings: from the arguments to what is to be printed.
#pragma once

#include <span>

#include "inspect/command.h"

namespace Cradle::Inspect {

// Does what the arguments say, the program's name first.
Answer runProgram(std::span<char*> arguments);

}  // namespace Cradle::Inspect
