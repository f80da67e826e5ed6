// SPDX-License-Identifier: MIT
// A locale of a test's own in which numbers have a decimal comma. The process uses it while it
// lives.
#pragma once

#include <clocale>
#include <cstdlib>
#include <stdexcept>
#include <string>

#include "support/environment_variable.h"
#include "support/temporary_directory.h"

namespace Cradle::Testing {

class CommaLocale {
 public:
  CommaLocale() {
    const std::string numbers = directory_.write(
        "numbers",
        "LC_NUMERIC\ndecimal_point \",\"\nthousands_sep \"\"\ngrouping -1\nEND LC_NUMERIC\n");
    const std::string characters =
        directory_.write("characters", "CHARMAP\n<U002C> \\x2c COMMA\nEND CHARMAP\n");
    // It warns of all that this locale lacks, with status 1.
    const std::string command = "localedef --quiet --force -f " + characters + " -i " + numbers +
                                " " + directory_.path(kName) + " 2>/dev/null";
    const EnvironmentVariable place("LOCPATH", directory_.path().c_str());
    if (std::system(command.c_str()) < 0) {
      throw std::runtime_error("cannot run " + command);
    }
    // Not newlocale, which loses the memory of the search path.
    if (std::setlocale(LC_NUMERIC, kName) == nullptr) {
      throw std::runtime_error("nothing comes of " + command);
    }
  }
  ~CommaLocale() { std::setlocale(LC_NUMERIC, "C"); }
  CommaLocale(const CommaLocale&) = delete;
  CommaLocale& operator=(const CommaLocale&) = delete;

 private:
  static constexpr const char* kName = "comma";

  TemporaryDirectory directory_;
};

}  // namespace Cradle::Testing
