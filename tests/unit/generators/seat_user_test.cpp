// SPDX-License-Identifier: MIT
// What can be seen of the seat without a login manager of the test's own.
#include "generators/seat_user.h"

#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <functional>
#include <string>

#include <dlfcn.h>
#include <gtest/gtest.h>

#include "generators/login_library.h"
#include "support/child_process.h"
#include "support/log_capture.h"

namespace Cradle::Generators {
namespace {

using Testing::inChildWithoutDescriptors;
using Testing::LogCapture;

// The user that `query` finds, the error number that it leaves and what it logs.
std::string answer(const std::function<std::uint32_t()>& query) {
  const LogCapture log(LogCapture::Level::LogDebug);
  errno = EBADF;
  const std::uint32_t user = query();
  const int error = errno;
  const std::string shown = user == kUnknownUser ? "nobody" : std::to_string(user);
  return shown + ", error " + std::to_string(error) + "\n" + log.text();
}

// The same on a machine whose login manager cannot be asked: nothing can be opened.
std::string answerWithoutLoginManager(const std::function<std::uint32_t()>& query) {
  loginLibrary();
  return inChildWithoutDescriptors([&] { return answer(query); });
}

const std::string kTooManyOpenFiles = "nobody, error " + std::to_string(EMFILE) + "\n";
const std::string kNoSessions = "WARNING: Could not get sessions for seat0\n";

TEST(SeatUser, IsTheOneWhoseSessionTheLoginManagerCallsActive) {
  ASSERT_NE(loginLibrary(), nullptr);
  uid_t user = kUnknownUser;
  const int result = loginLibrary()->seatGetActive("seat0", nullptr, &user);
  const std::uint32_t found = activeSeatUserOnly();
  const int error = errno;
  EXPECT_EQ(found, result < 0 ? kUnknownUser : user);
  if (result < 0) {
    EXPECT_EQ(error, -result);
  }
}

TEST(SeatUser, IsNotWaitedForWithATimeoutOfZero) {
  EXPECT_EQ(answer([] { return waitForActiveSeatUser(0); }), answer(activeSeatUser));
}

// Loads the library that stands in for the login manager's. One that is loaded already stands in
// for any of the same name that is asked for later, so this needs a process in which none has been.
void loadStub() {
  if (dlopen(SYSTEMD_STUB, RTLD_NOW) == nullptr) {
    std::exit(1);
  }
}

TEST(SeatUserDeathTest, IsWaitedForWithoutAnEndWithANegativeTimeout) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  const auto wait = [] {
    loadStub();
    std::exit(waitForActiveSeatUser(-1) == 1000 ? 0 : 2);
  };
  EXPECT_EXIT(wait(), ::testing::ExitedWithCode(0), "^look 1\nlook 2\n$");
}

TEST(SeatUserDeathTest, IsGivenUpWhenMoreWholeSecondsHavePassedThanTheTimeout) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  const auto wait = [] {
    loadStub();
    setenv("NOBODY_LOGS_IN", "", 1);
    const auto start = std::chrono::steady_clock::now();
    const bool nobody = waitForActiveSeatUser(1) == kUnknownUser;
    const bool tooEarly = std::chrono::steady_clock::now() - start < std::chrono::seconds(2);
    std::exit(nobody && !tooEarly ? 0 : 2);
  };
  EXPECT_EXIT(wait(), ::testing::ExitedWithCode(0),
              "journal <4> <%s> <Could not get sessions for seat0, timeout reached>\n$");
}

// Failures

TEST(SeatUser, IsNobodyWhereTheActiveSessionCannotBeAsked) {
  EXPECT_EQ(answerWithoutLoginManager(activeSeatUserOnly), kTooManyOpenFiles);
}

TEST(SeatUser, IsNobodyWithAWarningWhereTheSessionsCannotBeAsked) {
  EXPECT_EQ(answerWithoutLoginManager(activeSeatUser), kTooManyOpenFiles + kNoSessions);
}

TEST(SeatUser, NeedsNoMonitorWithATimeoutOfZero) {
  EXPECT_EQ(answerWithoutLoginManager([] { return waitForActiveSeatUser(0); }),
            kTooManyOpenFiles + kNoSessions);
}

TEST(SeatUser, IsNotWaitedForWithoutAMonitor) {
  for (const std::int32_t timeout : {1, kSeatUserTimeout, -1}) {
    EXPECT_EQ(answerWithoutLoginManager([=] { return waitForActiveSeatUser(timeout); }),
              kTooManyOpenFiles + kNoSessions + "WARNING: Could not create login monitor\n")
        << timeout;
  }
}

}  // namespace
}  // namespace Cradle::Generators
