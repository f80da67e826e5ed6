// SPDX-License-Identifier: MIT
#include "generators/login_library.h"

#include <optional>

#include "base/systemd_library.h"

namespace Cradle::Generators {
namespace {

std::optional<LoginLibrary> bindAll() {
  const SharedLibrary& library = systemdLibrary();
  LoginLibrary login{};
  const bool complete = library.bind(login.seatGetActive, "sd_seat_get_active") &&
                        library.bind(login.seatGetSessions, "sd_seat_get_sessions") &&
                        library.bind(login.monitorNew, "sd_login_monitor_new") &&
                        library.bind(login.monitorUnref, "sd_login_monitor_unref") &&
                        library.bind(login.monitorFlush, "sd_login_monitor_flush") &&
                        library.bind(login.monitorGetFd, "sd_login_monitor_get_fd") &&
                        library.bind(login.monitorGetEvents, "sd_login_monitor_get_events") &&
                        library.bind(login.monitorGetTimeout, "sd_login_monitor_get_timeout");
  return complete ? std::optional(login) : std::nullopt;
}

}  // namespace

const LoginLibrary* loginLibrary() {
  static const std::optional<LoginLibrary> library = bindAll();
  return library ? &*library : nullptr;
}

}  // namespace Cradle::Generators
