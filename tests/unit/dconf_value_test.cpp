// SPDX-License-Identifier: MIT
#include "dconf_value.h"

#include <cstdlib>
#include <string>

#include <glib.h>
#include <gtest/gtest.h>

#include "support/dconf_database.h"
#include "support/log_capture.h"
#include "support/users.h"
#include "template_context.h"

namespace Cradle::Parser {
namespace {

using Testing::DconfDatabase;
using Testing::LogCapture;
using Testing::thisUser;
using Testing::unusedUserId;

constexpr const char* kKey = "/cradle-test/key";

std::string configHome() {
  const char* const home = std::getenv("XDG_CONFIG_HOME");
  return home == nullptr ? "unset" : "[" + std::string(home) + "]";
}

// The value of a key and what is logged of it.
std::string answer(const char* key, std::int32_t uid) {
  const LogCapture log(LogCapture::Level::LogDebug);
  const std::string value = readDconf(key, uid);
  return "[" + value + "]" + log.text();
}

class DconfValue : public ::testing::Test {
 protected:
  const DconfDatabase database_{"[cradle-test]\nkey='some text'\nlist=['a']\nempty=''\n"};
  const std::int32_t user_ = static_cast<std::int32_t>(thisUser().uid);
};

TEST_F(DconfValue, IsReadFromTheDatabaseOfTheCaller) {
  EXPECT_EQ(database_.visibleTo([] { return answer(kKey, kNoUser); }), "[some text]");
}

TEST_F(DconfValue, IsReadAgainAndAgain) {
  const auto values = [] {
    return answer("/cradle-test/other", kNoUser) + answer(kKey, kNoUser) + answer(kKey, kNoUser);
  };
  EXPECT_EQ(database_.visibleTo(values), "[][some text][some text]");
}

TEST_F(DconfValue, IsReadFromTheDatabaseOfAGivenUserAndNotTheCallers) {
  EXPECT_EQ(database_.visibleTo([this] { return answer(kKey, user_); }), "[]");
}

// The variable that points at the database. GLib keeps what it saw in it during the first read.

TEST_F(DconfValue, IsLookedForBelowTheHomeOfTheUser) {
  const auto directory = [this] {
    readDconf(kKey, user_);
    return std::string(g_get_user_config_dir());
  };
  EXPECT_EQ(database_.visibleTo(directory), thisUser().home + "/.config");
}

TEST_F(DconfValue, LeavesASetConfigurationHomeToTheCaller) {
  const auto homeAfterwards = [] {
    readDconf(kKey, kNoUser);
    return configHome();
  };
  EXPECT_EQ(database_.visibleTo(homeAfterwards), "[" + database_.configHome() + "]");
}

TEST_F(DconfValue, LeavesAnUnsetConfigurationHomeUnsetWithoutAUser) {
  const auto homeAfterwards = [] {
    readDconf(kKey, kNoUser);
    return configHome();
  };
  EXPECT_EQ(database_.hiddenFrom(homeAfterwards), "unset");
}

TEST_F(DconfValue, PutsTheConfigurationHomeBackAfterReadingForAUser) {
  const auto homeAfterwards = [this] {
    readDconf(kKey, user_);
    return configHome();
  };
  EXPECT_EQ(database_.visibleTo(homeAfterwards), "[" + database_.configHome() + "]");
}

TEST_F(DconfValue, LeavesAnUnsetConfigurationHomeEmptyAfterReadingForAUser) {
  const auto homeAfterwards = [this] {
    readDconf(kKey, user_);
    return configHome();
  };
  EXPECT_EQ(database_.hiddenFrom(homeAfterwards), "[]");
}

// Failures

TEST_F(DconfValue, IsEmptyAndSilentForAKeyWithoutAText) {
  const auto values = [] {
    return answer("/cradle-test/empty", kNoUser) + answer("/cradle-test/other", kNoUser);
  };
  EXPECT_EQ(database_.visibleTo(values), "[][]");
}

TEST_F(DconfValue, IsEmptyWithAWarningForATypeThatHasNoText) {
  EXPECT_EQ(database_.visibleTo([] { return answer("/cradle-test/list", kNoUser); }),
            "[]WARNING: Unsupported GVariant type 'as'\n");
}

TEST_F(DconfValue, IsLookedForBelowAnEmptyHomeForAUserWhoDoesNotExist) {
  const auto directory = [] {
    readDconf(kKey, static_cast<std::int32_t>(unusedUserId()));
    return g_get_user_config_dir() + configHome();
  };
  EXPECT_EQ(database_.visibleTo(directory), "/.config[" + database_.configHome() + "]");
}

}  // namespace
}  // namespace Cradle::Parser
