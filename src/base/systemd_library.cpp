// SPDX-License-Identifier: MIT
#include "base/systemd_library.h"

namespace Cradle {

const SharedLibrary& systemdLibrary() {
  static const SharedLibrary library(kSystemdLibrary);
  return library;
}

}  // namespace Cradle
