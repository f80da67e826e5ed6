// SPDX-License-Identifier: MIT
// The two engines behind hooks and static fragments: they find files by a glob pattern, take them
// in ascending byte order and hand what they contribute to an action.
//
// Neither stops at a bad file: no match means no call, a file that cannot be read and a directory
// are passed over silently, and a failing script counts with the lines that it did print.
#pragma once

#include <functional>
#include <span>
#include <string>
#include <string_view>

namespace Cradle::Parser {

// Receives the path of a file or script and a line, or the whole text, of it.
using FileAction = std::function<void(const std::string& path, std::string_view text)>;

// Runs every matching script with `arguments` (see runCommand) and calls `action` for each line of
// its standard output, the empty ones included.
void forEachHookLine(const std::string& pattern, std::span<const std::string> arguments,
                     const FileAction& action);

// Reads every matching file and calls `action` once with its whole text.
void forEachFile(const std::string& pattern, const FileAction& action);

}  // namespace Cradle::Parser
