// SPDX-License-Identifier: MIT
// Usage: run-scripts SCRIPT...
// Runs scripts one after the other and reads what they print: the shells of a run with hooks,
// without the run.

#include <array>
#include <cstdio>
#include <iostream>
#include <span>
#include <string>

namespace {

bool runScript(const char* script, std::string& output) {
  std::FILE* const pipe = popen(script, "r");
  if (pipe == nullptr) {
    return false;
  }
  std::array<char, 4096> piece{};
  std::size_t size = 0;
  while ((size = std::fread(piece.data(), 1, piece.size(), pipe)) > 0) {
    output.append(piece.data(), size);
  }
  return pclose(pipe) == 0;
}

}  // namespace

int main(int argc, char** argv) {
  std::string output;
  for (const char* script : std::span(argv, static_cast<std::size_t>(argc)).subspan(1)) {
    if (!runScript(script, output)) {
      std::cerr << script << " failed\n";
      return 1;
    }
  }
  std::cout << output;
  return 0;
}
