// SPDX-License-Identifier: MIT
#include "common/cases.h"

#include <exception>
#include <iostream>
#include <regex>
#include <span>
#include <string_view>

#include <valgrind/callgrind.h>

#include "common/failure.h"

namespace Cradle::Bench {
namespace {

int countMatching(const std::vector<Case>& cases, const char* pattern) {
  require(RUNNING_ON_VALGRIND != 0, "--instructions works under callgrind only");
  const std::regex wanted(pattern);
  for (const Case& one : cases) {
    if (one.count && std::regex_search(one.name, wanted)) {
      one.count();
    }
  }
  return 0;
}

int timeMatching(int argc, char** argv, const std::vector<Case>& cases) {
  for (const Case& one : cases) {
    benchmark::RegisterBenchmark(one.name.c_str(), one.time)->UseManualTime();
  }
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
    return 1;
  }
  require(benchmark::RunSpecifiedBenchmarks() > 0, "no such benchmark");
  return 0;
}

}  // namespace

void countInstructions(const std::string& name, std::size_t items,
                       const std::function<void()>& work) {
  const std::string title = name + ' ' + std::to_string(items);
  CALLGRIND_START_INSTRUMENTATION;
  work();
  CALLGRIND_STOP_INSTRUMENTATION;
  CALLGRIND_DUMP_STATS_AT(title.c_str());
}

int runCases(int argc, char** argv, std::vector<Case> (*makeCases)()) {
  const std::span<char*> arguments(argv, static_cast<std::size_t>(argc));
  try {
    const std::vector<Case> cases = makeCases();
    if (arguments.size() == 3 && std::string_view(arguments[1]) == "--instructions") {
      return countMatching(cases, arguments[2]);
    }
    return timeMatching(argc, argv, cases);
  } catch (const std::exception& error) {
    std::cerr << arguments[0] << ": " << error.what() << '\n';
    return 1;
  }
}

}  // namespace Cradle::Bench
