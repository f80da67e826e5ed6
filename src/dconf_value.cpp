// SPDX-License-Identifier: MIT
#include "dconf_value.h"

#include <cstdlib>

#include <pwd.h>

#include "base/environment.h"
#include "dconf_library.h"
#include "template_context.h"
#include "variant_text.h"

namespace Cradle::Parser {
namespace {

constexpr const char* kConfigHome = "XDG_CONFIG_HOME";

// Points the dconf client at a user's database for as long as it lives.
class UserConfigHome {
 public:
  explicit UserConfigHome(std::int32_t uid) : previous_(getEnvironment(kConfigHome, "")) {
    const passwd* const user = getpwuid(static_cast<uid_t>(uid));
    const std::string home = user == nullptr ? "" : user->pw_dir;
    setenv(kConfigHome, (home + "/.config").c_str(), 1);
  }
  ~UserConfigHome() { setenv(kConfigHome, previous_.c_str(), 1); }
  UserConfigHome(const UserConfigHome&) = delete;
  UserConfigHome& operator=(const UserConfigHome&) = delete;

 private:
  std::string previous_;
};

std::string readKey(const std::string& key) {
  const DconfLibrary* const dconf = dconfLibrary();
  if (dconf == nullptr) {
    return "";
  }
  DConfClient* const client = dconf->clientNew();
  if (client == nullptr) {
    return "";
  }
  std::string text = variantToString(dconf->clientRead(client, key.c_str()));
  dconf->objectUnref(client);
  return text;
}

}  // namespace

std::string readDconf(const std::string& key, std::int32_t uid) {
  if (uid == kNoUser) {
    return readKey(key);
  }
  const UserConfigHome home(uid);
  return readKey(key);
}

}  // namespace Cradle::Parser
