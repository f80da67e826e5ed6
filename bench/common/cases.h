// SPDX-License-Identifier: MIT
// What a benchmark program measures, and its two modes: by default Google Benchmark times the
// cases; with "--instructions REGEX" under callgrind (--instr-atstart=no) each case that matches is
// counted once, in a dump of its own that bears its name.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

namespace Cradle::Bench {

struct Case {
  std::string name;
  // Sets the counter `items`, by which the time of an iteration is divided.
  std::function<void(benchmark::State& state)> time;
  // Hands the work to countInstructions().
  std::function<void()> count;
};

inline constexpr const char* kItems = "items";

// Counts the user-space instructions of `work` under the name, as the cost of so many items.
void countInstructions(const std::string& name, std::size_t items,
                       const std::function<void()>& work);

// The whole program: its exit status. What is thrown is printed.
int runCases(int argc, char** argv, std::vector<Case> (*makeCases)());

}  // namespace Cradle::Bench
