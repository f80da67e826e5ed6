// SPDX-License-Identifier: MIT
// Findings as lines of text, in the form that editors and people know from compilers.
#pragma once

#include <string>

#include "inspect/findings.h"
#include "inspect/page.h"

namespace Cradle::Inspect {

// Appends "PATH:LINE: SEVERITY: SENTENCE [KIND]".
void putFinding(Page& page, const Finding& finding);

// The lines of what keeps a run, or whoever looks, from reading its configuration: nothing where
// all is well.
std::string refusalText(const Inspection& inspection);

// The same of what might keep a run waiting for ever: pipes and devices that it reads.
std::string waitText(const Inspection& inspection);

}  // namespace Cradle::Inspect
