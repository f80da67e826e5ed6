// SPDX-License-Identifier: MIT
// What a run does to the host beside writing its output: it starts commands and makes a directory.
//
// A program that only looks refuses that. Nothing is refused otherwise. The decision is one for the
// whole process.
#pragma once

#include <string>

namespace Cradle::Parser {

// Is told of each thing that is left out: "run COMMAND" or "make the directory PATH".
using RefusalListener = void (*)(const std::string& what);

// From now on nothing is done and `listener` told instead; null allows everything again. Returns
// the listener so far.
RefusalListener refuseSideEffects(RefusalListener listener);

// Whether the command must not be run or the directory not be made. The listener has been told
// then.
bool isRefused(const std::string& command);
bool isDirectoryRefused(const std::string& path);

}  // namespace Cradle::Parser
