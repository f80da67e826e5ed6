// SPDX-License-Identifier: MIT
// What a configuration directory's hooks and static fragments contribute, and the device nodes that
// a configuration names.
//
// A missing directory and a pattern without a match contribute nothing; no function stops at a bad
// file or script (see file_walk.h).
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "config_writer.h"

namespace Cradle::Generators {

// Where a configuration directory keeps its hooks and fragments; appended to the directory.
inline constexpr const char* kMountHooks = "/mount-hooks/*.sh";
inline constexpr const char* kPropertyPreHooks = "/property-pre-hooks/*.sh";
inline constexpr const char* kPropertyPostHooks = "/property-post-hooks/*.sh";
inline constexpr const char* kStaticLxc = "/static/*.lxc";
inline constexpr const char* kStaticRo = "/static/*.ro";

// Writes each non-empty line of each file that matches `pattern` as a value of `key`.
void collectStatic(Parser::ConfigWriter& writer, const std::string& pattern, std::string_view key);

// Writes each non-empty line that the scripts matching `pattern` print as a value of `key`.
void collectPropertyHooks(Parser::ConfigWriter& writer, const std::string& pattern,
                          std::string_view key, std::span<const std::string> arguments);

// Writes each line that the property hooks of a directory print as it is. `kind` is "pre-hooks" or
// "post-hooks".
void runPropertyHooks(Parser::ConfigWriter& writer, std::string directory, std::string_view kind,
                      std::span<const std::string> arguments);

// The path of a named device: a name that begins with "/" as it is, any other below /dev.
std::string devicePath(const std::string& name);

// The paths that the named devices stand for, each name expanded as a glob pattern. Names without a
// match add nothing. Directories end in "/".
std::vector<std::string> gatherDeviceNodes(std::span<const std::string> names);

}  // namespace Cradle::Generators
