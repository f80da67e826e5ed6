// SPDX-License-Identifier: MIT
// Text from files and command lines, made safe to show: what would steer a terminal or reorder what
// stands on it, and what is no UTF-8, appears in escaped form.
#pragma once

#include <string>
#include <string_view>

namespace Cradle::Inspect {

// The text with such characters as "\t", "\n", "\x1b" or "\u202e".
std::string printable(std::string_view text);

// The same of several lines, whose line feeds stay.
std::string printableLines(std::string_view lines);

}  // namespace Cradle::Inspect
