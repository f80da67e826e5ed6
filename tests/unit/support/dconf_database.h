// SPDX-License-Identifier: MIT
// A dconf database of a test's own, which stands for the one of the user who runs the test.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <functional>
#include <stdexcept>
#include <string>

#include "support/child_process.h"
#include "support/environment_variable.h"
#include "support/temporary_directory.h"

namespace Cradle::Testing {

class DconfDatabase {
 public:
  // A database with the keys of the key file `keys`.
  explicit DconfDatabase(const std::string& keys) {
    directory_.write("keys/all", keys);
    directory_.write("profile", "user-db:user\n");
    std::filesystem::create_directories(directory_.path("config/dconf"));
    const std::string command = "dconf compile '" + directory_.path("config/dconf/user") + "' '" +
                                directory_.path("keys") + "'";
    if (std::system(command.c_str()) != 0) {
      throw std::runtime_error("failed: " + command);
    }
  }

  std::string configHome() const { return directory_.path("config"); }

  // What `action` returns in a process to which this database is the caller's own. GLib looks at
  // the environment only once per process, hence one for each action.
  std::string visibleTo(const std::function<std::string()>& action) const {
    return inChildProcess([&] {
      const EnvironmentVariable home("XDG_CONFIG_HOME", configHome().c_str());
      return withoutOthers(action);
    });
  }

  // The same in a process without the variable that points at this database.
  std::string hiddenFrom(const std::function<std::string()>& action) const {
    return inChildProcess([&] {
      const EnvironmentVariable home("XDG_CONFIG_HOME", nullptr);
      return withoutOthers(action);
    });
  }

 private:
  std::string withoutOthers(const std::function<std::string()>& action) const {
    const EnvironmentVariable profile("DCONF_PROFILE", directory_.path("profile").c_str());
    const EnvironmentVariable runtime("XDG_RUNTIME_DIR", directory_.path().c_str());
    const EnvironmentVariable home("HOME", directory_.path().c_str());
    return action();
  }

  TemporaryDirectory directory_;
};

}  // namespace Cradle::Testing
