// SPDX-License-Identifier: MIT
// GVariant values, as dconf stores them, as text.
#pragma once

#include <string>

#include <glib.h>

namespace Cradle::Parser {

// The text of `value`, whose reference is taken over and released; null gives the empty text.
// Booleans are "true" and "false", a byte is itself as one character, numbers are decimal in the
// "C" locale, strings stand as they are. Every other type is warned about and gives the empty text.
// Needs the dconf client library to be there (see dconfLibrary), without which nobody has a value.
std::string variantToString(GVariant* value);

}  // namespace Cradle::Parser
