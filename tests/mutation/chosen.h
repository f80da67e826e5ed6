// SPDX-License-Identifier: MIT
// What a source with faults in it asks: whether a fault is chosen in this program.
//
// tools/mutate writes into the built program which ones are. Each question is noted in a page of
// its own, which recorder.cpp puts into a file where the tests that reach a fault are looked for.
#pragma once

#include <type_traits>

inline constexpr int kCradleFaults = 16384;

struct CradleChoice {
  char mark[16];
  unsigned char chosen[kCradleFaults];
};

inline const volatile CradleChoice cradleChoice{"cradle-mutation", {}};
alignas(4096) inline unsigned char cradleReached[kCradleFaults];

inline bool cradleChosen(int fault) {
  cradleReached[fault] = 1;
  return cradleChoice.chosen[fault] != 0;
}

// The same in a function that may also be run by the compiler, which no fault reaches.
constexpr bool cradleChosenAtRunTime(int fault) {
  return !std::is_constant_evaluated() && cradleChosen(fault);
}
