// SPDX-License-Identifier: MIT
// Keeps what the coverage build has counted in processes that run no exit handlers.
#pragma once

#include <sys/resource.h>

// There only in a build that counts.
extern "C" [[gnu::weak]] void __gcov_dump();

namespace Cradle::Testing {

// To be called last in such a process. Descriptors that the process could not open any more are
// allowed again, because the counts are written to files.
inline void keepCounts() {
  if (__gcov_dump == nullptr) {
    return;
  }
  rlimit limit{};
  getrlimit(RLIMIT_NOFILE, &limit);
  limit.rlim_cur = limit.rlim_max;
  setrlimit(RLIMIT_NOFILE, &limit);
  __gcov_dump();
}

}  // namespace Cradle::Testing
