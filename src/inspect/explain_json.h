// SPDX-License-Identifier: MIT
// The life of a key, for programs.
#pragma once

#include <string>

#include "inspect/explanation.h"

namespace Cradle::Inspect {

std::string explainJson(const Inspection& inspection, const Explanation& explanation);

}  // namespace Cradle::Inspect
