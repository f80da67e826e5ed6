// What a run does to the host beside writing its output: it starts commands and makes a directory.
//
// A program that only looks refuses that. Nothing is refused otherwise. The decision is one for the
// whole process.
#pragma once

#include <string>

namespace Cradle::Parser {

// Is told of each thing that is left out: a command, or the path of a directory.
using RefusalListener = void (*)(const std::string& what);

// From now on nothing is done and `listener` told instead; null allows everything again. Returns
// the listener so far.
RefusalListener refuseSideEffects(RefusalListener listener);

// Whether `what` must not be done. The listener has been told then.
bool isRefused(const std::string& what);

}  // namespace Cradle::Parser
