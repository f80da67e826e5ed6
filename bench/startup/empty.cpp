// SPDX-License-Identifier: MIT
// The least that a program can be.

int main() {
  return 0;
}
