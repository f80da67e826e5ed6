// SPDX-License-Identifier: MIT
// The systemd client library, opened by the first caller that needs the journal or the login state.
#pragma once

#include "base/shared_library.h"

namespace Cradle {

// The library, for the life of the process; not open where the host has none.
const SharedLibrary& systemdLibrary();

}  // namespace Cradle
