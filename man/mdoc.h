// SPDX-License-Identifier: MIT
// Text as the sources of manual pages hold it (mdoc).
#pragma once

#include <string>
#include <string_view>

namespace Cradle::Manual {

// A literal as the argument of a macro: in double quotes, nothing in it special, its dashes such
// that they can be copied.
std::string argument(std::string_view literal);

// Prose on lines of its own: every sentence begins one, and none is long.
std::string prose(std::string_view sentences);

}  // namespace Cradle::Manual
