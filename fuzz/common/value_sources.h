// SPDX-License-Identifier: MIT
// Value sources that the templates of a fuzzed text may ask without harm.
//
// A target that links common/value_sources.cpp gets them in place of the program's own: the linker
// takes no object from the library for a function that it has already. Nothing outside the process
// is touched, no command is run, and the template evaluator itself stays as it is.
#pragma once

#include <optional>
#include <string>

namespace Cradle::Fuzz {

// What the source of the format of that name has for an argument: a text that names both and that
// would be a template itself if it was scanned, or nothing where the argument is empty or begins
// with "-". An environment file's argument is "FILE:NAME".
std::optional<std::string> sourceValue(const std::string& format, const std::string& argument);

// The user whose dconf database is asked.
inline constexpr int kDconfUser = 1234;

}  // namespace Cradle::Fuzz
