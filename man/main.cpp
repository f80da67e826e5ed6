// SPDX-License-Identifier: MIT
// cradle-manual: makes the manual pages while the project is built. It is not installed.
//
//   cradle-manual fill SOURCE PAGE   writes the page that the source describes
//   cradle-manual tables             prints what the pages have to show, for their tests

#include <exception>
#include <fstream>
#include <iostream>
#include <iterator>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>

#include "page.h"
#include "sections.h"

namespace {

void fill(const char* source, const char* page) {
  std::ifstream in(source);
  const std::string text{std::istreambuf_iterator<char>(in), {}};
  std::ofstream out(page);
  out << Cradle::Manual::filled(text) << std::flush;
  if (!in || !out) {
    throw std::runtime_error("cannot be read, or " + std::string(page) + " not be written");
  }
}

}  // namespace

int main(int argc, char** argv) {
  const std::span<char* const> arguments(argv, static_cast<std::size_t>(argc));
  const std::string_view command = arguments.size() > 1 ? arguments[1] : "";
  if (command == "tables" && arguments.size() == 2) {
    std::cout << Cradle::Manual::tables();
    return 0;
  }
  if (command != "fill" || arguments.size() != 4) {
    std::cerr << "Usage: cradle-manual fill SOURCE PAGE | tables\n";
    return 2;
  }
  try {
    fill(arguments[2], arguments[3]);
  } catch (const std::exception& fault) {
    std::cerr << arguments[2] << ": " << fault.what() << "\n";
    return 1;
  }
  return 0;
}
