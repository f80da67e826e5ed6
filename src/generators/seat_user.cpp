// SPDX-License-Identifier: MIT
#include "generators/seat_user.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <limits>
#include <memory>

#include <poll.h>

#include "generators/login_library.h"
#include "library_logger.h"

namespace Cradle::Generators {
namespace {

using Parser::libraryLogger;

constexpr const char* kSeat = "seat0";
constexpr const char* kMonitoredCategory = "uid";
constexpr std::uint64_t kMicrosecondsPerSecond = 1'000'000;
constexpr std::uint64_t kMicrosecondsPerMillisecond = 1'000;

struct SeatSessions {
  int count;  // or a negative error number
  std::uint32_t firstUser;
};

SeatSessions seatSessions() {
  const LoginLibrary* const login = loginLibrary();
  if (login == nullptr) {
    return {-ENOSYS, kUnknownUser};
  }
  uid_t* users = nullptr;
  unsigned userCount = 0;
  const int count = login->seatGetSessions(kSeat, nullptr, &users, &userCount);
  const std::unique_ptr<uid_t, decltype(&std::free)> owner(users, &std::free);
  // A seat can list sessions without telling whose they are; the count is not to be trusted then.
  return {count, users != nullptr && userCount > 0 ? users[0] : kUnknownUser};
}

struct MonitorDeleter {
  void operator()(sd_login_monitor* monitor) const { loginLibrary()->monitorUnref(monitor); }
};
using Monitor = std::unique_ptr<sd_login_monitor, MonitorDeleter>;

Monitor newMonitor() {
  sd_login_monitor* monitor = nullptr;
  const LoginLibrary* const login = loginLibrary();
  if (login == nullptr || login->monitorNew(kMonitoredCategory, &monitor) < 0) {
    return nullptr;
  }
  return Monitor(monitor);
}

// The login manager's "no timeout" is the largest number, poll's a negative one.
int pollTimeout(std::uint64_t microseconds) {
  const std::uint64_t milliseconds = microseconds / kMicrosecondsPerMillisecond;
  return milliseconds > std::numeric_limits<int>::max() ? -1 : static_cast<int>(milliseconds);
}

// Waits until there is a user, or for as long as `timeout` says.
std::uint32_t waitForLogin(sd_login_monitor* monitor, std::int32_t timeout) {
  using Clock = std::chrono::steady_clock;
  const Clock::time_point start = Clock::now();
  const LoginLibrary& login = *loginLibrary();
  std::uint64_t remaining = std::numeric_limits<std::uint64_t>::max();
  login.monitorGetTimeout(monitor, &remaining);
  pollfd logins{login.monitorGetFd(monitor), static_cast<short>(login.monitorGetEvents(monitor)),
                0};
  for (;;) {
    if (timeout >= 1) {
      const auto elapsed =
          std::chrono::duration_cast<std::chrono::seconds>(Clock::now() - start).count();
      if (elapsed > timeout) {
        libraryLogger().warning() << "Could not get sessions for seat0, timeout reached";
        return kUnknownUser;
      }
      remaining = std::min(remaining,
                           static_cast<std::uint64_t>(timeout - elapsed) * kMicrosecondsPerSecond);
    }
    if (poll(&logins, 1, pollTimeout(remaining)) < 0) {
      libraryLogger().warning() << "Polling login monitor failed!";
      return kUnknownUser;
    }
    login.monitorFlush(monitor);
    if (const std::uint32_t user = activeSeatUser(); user != kUnknownUser) {
      return user;
    }
  }
}

}  // namespace

std::uint32_t activeSeatUserOnly() {
  const LoginLibrary* const login = loginLibrary();
  uid_t user = kUnknownUser;
  const int result = login == nullptr ? -ENOSYS : login->seatGetActive(kSeat, nullptr, &user);
  if (result < 0) {
    errno = -result;
    return kUnknownUser;
  }
  return user;
}

std::uint32_t activeSeatUser() {
  if (const std::uint32_t user = activeSeatUserOnly(); user != kUnknownUser) {
    libraryLogger().debug() << "Active session on seat0 found for UID " << user;
    return user;
  }
  errno = 0;
  const SeatSessions sessions = seatSessions();
  if (sessions.count < 0) {
    libraryLogger().warning() << "Could not get sessions for seat0";
    errno = -sessions.count;
    return kUnknownUser;
  }
  if (sessions.count != 1 || sessions.firstUser == kUnknownUser) {
    return kUnknownUser;
  }
  libraryLogger().debug() << "There is only one session on seat0, selecting UID "
                          << sessions.firstUser << " as active user";
  return sessions.firstUser;
}

std::uint32_t waitForActiveSeatUser(std::int32_t timeout) {
  const std::uint32_t user = activeSeatUser();
  if (user != kUnknownUser || timeout == 0) {
    return user;
  }
  const Monitor monitor = newMonitor();
  if (!monitor) {
    libraryLogger().warning() << "Could not create login monitor";
    return kUnknownUser;
  }
  return waitForLogin(monitor.get(), timeout);
}

}  // namespace Cradle::Generators
