// SPDX-License-Identifier: MIT
// Measures in a child process of its own, so that each measurement starts alike: an allocator that
// has given nothing out, no memory left from the one before, and nothing to destroy at the end. So
// does the program, which loads once.
#pragma once

#include <array>
#include <exception>
#include <functional>
#include <iostream>
#include <type_traits>

#include <sys/wait.h>
#include <unistd.h>

#include "common/failure.h"

namespace Cradle::Bench {

// The child's end: nothing that belongs to the parent is unwound or destroyed.
template <typename Result>
[[noreturn]] void workAndExit(const std::function<Result()>& work, int output) {
  try {
    const Result result = work();
    _exit(write(output, &result, sizeof result) == sizeof result ? 0 : 1);
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    _exit(1);
  }
}

// What `work` returns in the child.
template <typename Result>
Result inFreshProcess(const std::function<Result()>& work) {
  static_assert(std::is_trivially_copyable_v<Result>);
  std::array<int, 2> ends{};
  require(pipe(ends.data()) == 0, "no pipe");
  const pid_t child = fork();
  require(child >= 0, "no child process");
  if (child == 0) {
    workAndExit(work, ends[1]);
  }
  close(ends[1]);
  Result result{};
  const bool complete = read(ends[0], &result, sizeof result) == sizeof result;
  close(ends[0]);
  int status = 0;
  require(waitpid(child, &status, 0) == child && status == 0 && complete, "a measurement failed");
  return result;
}

}  // namespace Cradle::Bench
