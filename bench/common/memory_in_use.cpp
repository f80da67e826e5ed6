// SPDX-License-Identifier: MIT
#include "common/memory_in_use.h"

#include <fstream>

#include <malloc.h>
#include <unistd.h>

namespace Cradle::Bench {

MemoryInUse memoryInUse() {
  const struct mallinfo2 heap = mallinfo2();
  double pages = 0;
  double residentPages = 0;
  std::ifstream("/proc/self/statm") >> pages >> residentPages;
  return {.heap = static_cast<double>(heap.uordblks + heap.hblkhd),
          .resident = residentPages * static_cast<double>(sysconf(_SC_PAGESIZE))};
}

}  // namespace Cradle::Bench
