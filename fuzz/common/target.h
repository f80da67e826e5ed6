// SPDX-License-Identifier: MIT
// What every target of the fuzzer defines: one check of the program against one input.
//
// The input may hold any bytes. A check runs the program's functions on it and looks at the result
// by other means than the program's own (see common/check.h). It leaves no state behind.
#pragma once

#include <string>

namespace Cradle::Fuzz {

void checkInput(const std::string& input);

}  // namespace Cradle::Fuzz
