// SPDX-License-Identifier: MIT
// What keeps a file from being used, in the operating system's words; empty where nothing does.
#pragma once

#include <string>

namespace Cradle::Inspect {

// Why it is not to be opened: a named pipe, where opening waits for a writer, or a device, which
// may have no end. The null device stands for an empty file.
std::string whyNoFile(const std::string& path);

// Why the caller cannot read it.
std::string whyUnreadable(const std::string& path);

// Why the files in a directory cannot be found or opened; empty for what is no directory.
std::string whyNotListed(const std::string& directory);

// Why the shell cannot start it.
std::string whyNotRunnable(const std::string& path);

}  // namespace Cradle::Inspect
