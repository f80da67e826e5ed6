// SPDX-License-Identifier: MIT
// A library in the place of the systemd client library: a seat on which nobody is until some time
// after somebody has begun to watch it; user 1000 then, or still nobody where NOBODY_LOGS_IN is
// set. Every look at the seat is shown on standard error.

#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include <poll.h>
#include <sys/timerfd.h>
#include <sys/types.h>

namespace {

constexpr long kDelay = 200'000'000;  // nanoseconds
constexpr uid_t kUser = 1000;

int looks = 0;
char monitor;  // only its address counts
pollfd login{-1, POLLIN, 0};

}  // namespace

extern "C" {

int sd_seat_get_active(const char* /*seat*/, char** /*session*/, uid_t* user) {
  std::fprintf(stderr, "look %d\n", ++looks);
  *user = kUser;
  return poll(&login, 1, 0) == 1 ? 0 : -1;
}

int sd_seat_get_sessions(const char* /*seat*/, char*** /*sessions*/, uid_t** /*users*/,
                         unsigned* /*count*/) {
  return 0;
}

int sd_login_monitor_new(const char* /*category*/, char** created) {
  *created = &monitor;
  return 0;
}

char* sd_login_monitor_unref(char* /*monitor*/) {
  return nullptr;
}

int sd_login_monitor_flush(char* /*monitor*/) {
  return 0;
}

int sd_login_monitor_get_fd(char* /*monitor*/) {
  const itimerspec once{{0, 0}, {0, kDelay}};
  login.fd = timerfd_create(CLOCK_MONOTONIC, TFD_CLOEXEC);
  if (std::getenv("NOBODY_LOGS_IN") == nullptr) {
    timerfd_settime(login.fd, 0, &once, nullptr);
  }
  return login.fd;
}

int sd_login_monitor_get_events(char* /*monitor*/) {
  return login.events;
}

// No timeout of its own.
int sd_login_monitor_get_timeout(char* /*monitor*/, std::uint64_t* microseconds) {
  *microseconds = UINT64_MAX;
  return 0;
}

}  // extern "C"
