// SPDX-License-Identifier: MIT
#include "generators/login_library.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

#include "base/systemd_library.h"

namespace Cradle::Generators {
namespace {

// The name under which the dynamic linker knows a function.
template <typename Function>
std::string nameOf(Function* function) {
  Dl_info info{};
  EXPECT_NE(dladdr(reinterpret_cast<void*>(function), &info), 0);
  return info.dli_sname == nullptr ? "" : info.dli_sname;
}

TEST(LoginLibrary, BindsEveryFunctionByItsName) {
  const LoginLibrary* const login = loginLibrary();
  ASSERT_NE(login, nullptr);
  EXPECT_EQ(nameOf(login->seatGetActive), "sd_seat_get_active");
  EXPECT_EQ(nameOf(login->seatGetSessions), "sd_seat_get_sessions");
  EXPECT_EQ(nameOf(login->monitorNew), "sd_login_monitor_new");
  EXPECT_EQ(nameOf(login->monitorUnref), "sd_login_monitor_unref");
  EXPECT_EQ(nameOf(login->monitorFlush), "sd_login_monitor_flush");
  EXPECT_EQ(nameOf(login->monitorGetFd), "sd_login_monitor_get_fd");
  EXPECT_EQ(nameOf(login->monitorGetEvents), "sd_login_monitor_get_events");
  EXPECT_EQ(nameOf(login->monitorGetTimeout), "sd_login_monitor_get_timeout");
}

}  // namespace
}  // namespace Cradle::Generators
