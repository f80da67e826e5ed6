// SPDX-License-Identifier: MIT
// Usage: copy-lines INPUT OUTPUT
// Copies a file line by line with a flush for each: the plain program that writes what
// cradle-generate-config writes, without knowing anything about it.

#include <fstream>
#include <iostream>
#include <string>

int main(int argc, char** argv) {
  if (argc != 3) {
    std::cerr << "Usage: copy-lines INPUT OUTPUT\n";
    return 2;
  }
  std::ifstream input(argv[1]);
  std::ofstream output(argv[2]);
  std::string line;
  while (std::getline(input, line)) {
    output << line << '\n' << std::flush;
  }
  return output.good() && input.eof() ? 0 : 1;
}
