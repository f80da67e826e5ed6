// SPDX-License-Identifier: MIT
// The function that the fuzzer and the replay call.

#include <cstddef>
#include <cstdint>

#include "common/target.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Cradle::Fuzz::checkInput({data, data + size});
  return 0;
}
