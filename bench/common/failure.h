// SPDX-License-Identifier: MIT
// How a benchmark fails: with a message and a non-zero status, since a measurement of something
// that did not work is worse than none.
//
// What is required is checked in every build. The exception that is thrown ends the whole program:
// runCases() prints its message, and no other case is measured.
#pragma once

#include <stdexcept>
#include <string>

namespace Cradle::Bench {

inline void require(bool holds, const std::string& message) {
  if (!holds) {
    throw std::runtime_error(message);
  }
}

}  // namespace Cradle::Bench
