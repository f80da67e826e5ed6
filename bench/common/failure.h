// How a benchmark fails: with a message and a non-zero status. A measurement of something that did
// not work is worse than none.
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
