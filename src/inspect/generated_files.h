// SPDX-License-Identifier: MIT
// Generated configurations among the files that a run reads.
#pragma once

#include <string>
#include <vector>

#include "inspect/journal.h"

namespace Cradle::Inspect {

// The positions of the files that hold the facts of a run.
std::vector<std::uint32_t> generatedFiles(const Journal& journal);

}  // namespace Cradle::Inspect
