// SPDX-License-Identifier: MIT
// The least that a C++ program with the standard streams can be.

#include <iostream>

int main() {
  return 0;
}
