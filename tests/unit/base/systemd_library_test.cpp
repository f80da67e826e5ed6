// SPDX-License-Identifier: MIT
#include "base/systemd_library.h"

#include <gtest/gtest.h>

namespace Cradle {
namespace {

TEST(SystemdLibrary, HasTheJournalAndTheLoginState) {
  ASSERT_TRUE(systemdLibrary().isOpen());
  for (const char* const name :
       {"sd_journal_print", "sd_seat_get_active", "sd_seat_get_sessions", "sd_login_monitor_new"}) {
    EXPECT_NE(systemdLibrary().find<void()>(name), nullptr) << name;
  }
}

}  // namespace
}  // namespace Cradle
