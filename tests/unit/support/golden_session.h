// SPDX-License-Identifier: MIT
// What cradle-inspect-config prints on a host without a configuration, as the end-to-end tests have
// it: each command line behind "$ ", then its output.
#pragma once

#include <filesystem>
#include <string>

#include "support/golden_cases.h"

namespace Cradle::Testing {

inline std::string goldenSession() {
  const std::filesystem::path cases(GOLDEN_DIRECTORY);
  return readGolden(cases.parent_path() / "inspect/nothing/session");
}

}  // namespace Cradle::Testing
