// SPDX-License-Identifier: MIT
// The login manager's client functions, bound from the systemd library when first needed.
#pragma once

#include <systemd/sd-login.h>

namespace Cradle::Generators {

struct LoginLibrary {
  decltype(sd_seat_get_active)* seatGetActive;
  decltype(sd_seat_get_sessions)* seatGetSessions;
  decltype(sd_login_monitor_new)* monitorNew;
  decltype(sd_login_monitor_unref)* monitorUnref;
  decltype(sd_login_monitor_flush)* monitorFlush;
  decltype(sd_login_monitor_get_fd)* monitorGetFd;
  decltype(sd_login_monitor_get_events)* monitorGetEvents;
  decltype(sd_login_monitor_get_timeout)* monitorGetTimeout;
};

// The bound functions, or null when the library or any of the functions is missing.
const LoginLibrary* loginLibrary();

}  // namespace Cradle::Generators
