// SPDX-License-Identifier: MIT
// The life of a key, for people.
#pragma once

#include <string>

#include "inspect/explanation.h"

namespace Cradle::Inspect {

std::string explainText(const Inspection& inspection, const Explanation& explanation,
                        bool coloured);

}  // namespace Cradle::Inspect
