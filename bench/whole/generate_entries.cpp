// SPDX-License-Identifier: MIT
// Usage: generate-entries COUNT OUTPUT
// Writes a configuration file with so many entries, for the measurements of whole programs.

#include <iostream>
#include <string>

#include "common/entry_stream.h"

int main(int argc, char** argv) {
  if (argc != 3) {
    std::cerr << "Usage: generate-entries COUNT OUTPUT\n";
    return 2;
  }
  Cradle::Bench::writeEntries(argv[2], std::stoul(argv[1]));
  return 0;
}
