// SPDX-License-Identifier: MIT
#include "base/uninterrupted.h"

#include <gtest/gtest.h>

namespace Cradle {
namespace {

TEST(Uninterrupted, RepeatsACallUntilNoSignalInterruptsIt) {
  int calls = 0;
  const int result = uninterrupted([&] {
    errno = EINTR;
    return ++calls < 3 ? -1 : 7;
  });
  EXPECT_EQ(result, 7);
  EXPECT_EQ(calls, 3);
}

TEST(Uninterrupted, RepeatsACallThatReturnsNull) {
  int calls = 0;
  const int* const result = uninterrupted([&] {
    errno = EINTR;
    return ++calls < 3 ? nullptr : &calls;
  });
  EXPECT_EQ(result, &calls);
  EXPECT_EQ(calls, 3);
}

TEST(Uninterrupted, TakesNullWithoutAnErrorAsItIs) {
  int calls = 0;
  const void* const result = uninterrupted([&]() -> void* {
    errno = 0;
    ++calls;
    return nullptr;
  });
  EXPECT_EQ(result, nullptr);
  EXPECT_EQ(errno, 0);
  EXPECT_EQ(calls, 1);
}

TEST(Uninterrupted, IgnoresTheErrorOfAnEarlierCall) {
  errno = EINTR;
  int calls = 0;
  EXPECT_EQ(uninterrupted([&] { return ++calls; }), 1);
  EXPECT_EQ(uninterrupted([&] { return &++calls; }), &calls);
  EXPECT_EQ(calls, 2);
}

// Failures

TEST(Uninterrupted, LeavesAnyOtherFailureToTheCaller) {
  int calls = 0;
  const int result = uninterrupted([&] {
    errno = EIO;
    ++calls;
    return -1;
  });
  EXPECT_EQ(result, -1);
  EXPECT_EQ(errno, EIO);
  EXPECT_EQ(calls, 1);
}

TEST(Uninterrupted, LeavesNullWithAnyOtherErrorToTheCaller) {
  int calls = 0;
  const void* const result = uninterrupted([&]() -> void* {
    errno = EIO;
    ++calls;
    return nullptr;
  });
  EXPECT_EQ(result, nullptr);
  EXPECT_EQ(errno, EIO);
  EXPECT_EQ(calls, 1);
}

}  // namespace
}  // namespace Cradle
