// SPDX-License-Identifier: MIT
// A user's dconf database as a value source.
#pragma once

#include <cstdint>
#include <string>

namespace Cradle::Parser {

// The value of `key` as text (see variantToString), or the empty text where it has none or the
// dconf client library is missing. For a `uid` other than -1 that user's database is read:
// XDG_CONFIG_HOME is set to the .config of the user's home directory for the duration of the call
// and then back to its value; a variable that was unset is left set to the empty text. Changes the
// process environment, so nothing else may read or change it meanwhile.
std::string readDconf(const std::string& key, std::int32_t uid);

}  // namespace Cradle::Parser
