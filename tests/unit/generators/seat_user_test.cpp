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
using namespace std::chrono_literals;

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

// That it is kept is seen with whole runs, which take as long.
TEST(SeatUser, IsWaitedForHalfAMinute) {
  EXPECT_EQ(std::to_string(kSeatUserTimeout) + " s", "30 s");
}

// Loads the library that stands in for the login manager's, for a seat of that kind. One that is
// loaded already stands in for any of the same name that is asked for later, so this needs a
// process in which none has been.
void loadStub(const char* seat) {
  setenv("SEAT", seat, 1);
  if (dlopen(SYSTEMD_STUB, RTLD_NOW) == nullptr) {
    std::exit(1);
  }
}

class SeatUserDeathTest : public ::testing::Test {
 protected:
  SeatUserDeathTest() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }

  // Ends with 0 if the user comes to the seat at some time.
  [[noreturn]] static void waitForUser(const char* seat) {
    loadStub(seat);
    std::exit(waitForActiveSeatUser(-1) == 1000 ? 0 : 2);
  }

  // Ends with 0 if nobody comes within `timeout` seconds, and if that takes as long as it may.
  [[noreturn]] static void waitInVain(const char* seat, std::int32_t timeout,
                                      std::chrono::milliseconds least,
                                      std::chrono::milliseconds most) {
    loadStub(seat);
    const auto start = std::chrono::steady_clock::now();
    const bool nobody = waitForActiveSeatUser(timeout) == kUnknownUser;
    const auto taken = std::chrono::steady_clock::now() - start;
    std::exit(nobody && taken >= least && taken < most ? 0 : 2);
  }
};

constexpr const char* kTimeIsOver =
    "journal <4> <%s> <Could not get sessions for seat0, timeout reached>\n$";

TEST_F(SeatUserDeathTest, IsWaitedForWithoutAnEndWithANegativeTimeout) {
  EXPECT_EXIT(waitForUser(""), ::testing::ExitedWithCode(0), "^look 1\nflushed\nlook 2\n$");
}

TEST_F(SeatUserDeathTest, IsLookedForWhenTheMonitorWantsIt) {
  EXPECT_EXIT(waitForUser("unannounced"), ::testing::ExitedWithCode(0),
              "^look 1\nflushed\nlook 2\n$");
}

TEST_F(SeatUserDeathTest, IsGivenUpWhenMoreWholeSecondsHavePassedThanTheTimeout) {
  EXPECT_EXIT(waitInVain("left alone", 1, 2s, 1h), ::testing::ExitedWithCode(0), kTimeIsOver);
}

TEST_F(SeatUserDeathTest, IsWaitedForNoLongerWhenSomethingElseHappens) {
  EXPECT_EXIT(waitInVain("busy", 5, 6s, 9500ms), ::testing::ExitedWithCode(0), kTimeIsOver);
}

TEST_F(SeatUserDeathTest, IsNobodyWithoutAnErrorWhereASessionIsNobodys) {
  const auto look = [] {
    loadStub("unnamed");
    std::exit(activeSeatUser() == kUnknownUser && errno == 0 ? 0 : 2);
  };
  EXPECT_EXIT(look(), ::testing::ExitedWithCode(0), "^look 1\n$");
}

// Failures

TEST(SeatUser, IsNobodyWhereTheActiveSessionCannotBeAsked) {
  EXPECT_EQ(answerWithoutLoginManager(activeSeatUserOnly), kTooManyOpenFiles);
}

TEST(SeatUser, IsNobodyWithAWarningWhereTheSessionsCannotBeAsked) {
  EXPECT_EQ(answerWithoutLoginManager(activeSeatUser), kTooManyOpenFiles + kNoSessions);
}

TEST_F(SeatUserDeathTest, IsNobodyWhereThereIsNoLibraryToAsk) {
  for (const auto ask : {activeSeatUserOnly, activeSeatUser}) {
    const auto look = [&] {
      Testing::limitDescriptors(0);
      const bool nobody = ask() == kUnknownUser && errno == ENOSYS;
      std::_Exit(nobody ? 0 : 2);
    };
    EXPECT_EXIT(look(), ::testing::ExitedWithCode(0), "");
  }
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
