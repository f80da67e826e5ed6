// SPDX-License-Identifier: MIT
// Lets the unit tests say which faults each of them has reached: a line with the name of the test,
// the processor time that it has taken in microseconds, and their numbers. Those that were reached
// before the first test have the name "*".
#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <fstream>

#include <gtest/gtest.h>

#include "chosen.h"

namespace {

std::clock_t start = 0;

void note(const std::string& name) {
  std::ofstream out(REACH_LIST, std::ios::app);
  out << name << ' ' << std::clock() - start;
  for (int fault = 0; fault < kCradleFaults; ++fault) {
    if (cradleReached[fault] != 0) {
      out << ' ' << fault;
    }
  }
  out << '\n';
}

void forget() {
  std::fill(std::begin(cradleReached), std::end(cradleReached), 0);
  start = std::clock();
}

class Recorder : public testing::EmptyTestEventListener {
  void OnTestProgramStart(const testing::UnitTest& /*all*/) override {
    note("*");
    forget();
  }
  void OnTestEnd(const testing::TestInfo& test) override {
    note(std::string(test.test_suite_name()) + '.' + test.name());
    forget();
  }
};

// Not in the process of a death test, whose test goes on in the one that began it.
const bool kListens = [] {
  const bool begun = std::getenv("CRADLE_RECORDS") != nullptr;
  if (std::ifstream(REACH_FILE).good() && !begun) {
    setenv("CRADLE_RECORDS", "", 1);
    testing::UnitTest::GetInstance()->listeners().Append(new Recorder);
  }
  return !begun;
}();

}  // namespace
