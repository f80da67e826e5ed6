// SPDX-License-Identifier: MIT
// Calls of the operating system that a signal may interrupt, made again until none does.
//
// Such a call returns a negative number or null where it fails. One whose null may also say that
// there is nothing to return sets errno to 0 first, which alone tells the two apart.
#pragma once

#include <cerrno>

#include <sys/types.h>

namespace Cradle {

constexpr bool isFailure(ssize_t result) {
  return result < 0;
}
constexpr bool isFailure(const void* result) {
  return result == nullptr;
}

// The result of `call`, which is made until no signal interrupts it.
template <typename Call>
auto uninterrupted(Call call) {
  auto result = call();
  while (isFailure(result) && errno == EINTR) {
    result = call();
  }
  return result;
}

}  // namespace Cradle
