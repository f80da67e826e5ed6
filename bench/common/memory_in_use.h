// SPDX-License-Identifier: MIT
// How much memory this process holds, told in two ways: what was asked of the C library's
// allocator, which is exact, and what is resident, which also knows of memory from elsewhere.
//
// Both are totals of the process: what an object holds is the difference of two of them, with
// nothing else made or destroyed in between. Without /proc nothing seems to be resident.
#pragma once

namespace Cradle::Bench {

struct MemoryInUse {
  double heap;      // bytes; mallinfo2: uordblks and hblkhd
  double resident;  // bytes; /proc/self/statm
};

MemoryInUse memoryInUse();

}  // namespace Cradle::Bench
