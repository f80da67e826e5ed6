// What keeps a file from being used, in the operating system's words; empty where nothing does.
#pragma once

#include <string>

namespace Cradle::Inspect {

// Why the caller cannot read it.
std::string whyUnreadable(const std::string& path);

// Why the shell cannot start it.
std::string whyNotRunnable(const std::string& path);

}  // namespace Cradle::Inspect
