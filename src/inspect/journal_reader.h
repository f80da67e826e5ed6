// SPDX-License-Identifier: MIT
// Reads configuration directories as a run does, and keeps the journal of it.
#pragma once

#include <string>
#include <vector>

#include "config_parser.h"
#include "inspect/journal.h"

namespace Cradle::Inspect {

// Reads the "*.conf" files of the directories in their order into `parser`, and returns what they
// said. Bad lines and files are passed over. Commands of "system" templates are started only with
// `execute`; otherwise such a substitution stays in the text as it is.
Journal readJournal(const std::vector<std::string>& directories, Parser::ConfigParser& parser,
                    bool execute);

}  // namespace Cradle::Inspect
